// platform/headless/MemoryFiles.cpp: writing into memory as a disk would take it.
#include "platform/headless/MemoryFiles.h"

#include <algorithm>

namespace velkor {

/// Bytes reach the file as they are written, those before a failure too.
class MemoryFiles::Output : public OutputFile {
 public:
  Output(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {
    files_.held_.insert(path_);
    files_.contents[path_].clear();
  }
  ~Output() override { files_.held_.erase(path_); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void Write(std::string_view bytes) override {
    std::optional<std::size_t>& left = files_.fail.writeAfter;
    const std::size_t room = std::min(left.value_or(bytes.size()), bytes.size());
    files_.contents[path_].append(bytes.substr(0, room));
    if (left) *left -= room;
    if (room < bytes.size()) throw Error(files_.fail.writeError, "Cannot write " + path_);
  }
  void Flush() override {}
  bool MoveOver(const std::string& path) override {
    if (files_.fail.replace.contains(path) || files_.held_.contains(path)) return false;
    auto node = files_.contents.extract(path_);
    if (node.empty()) return false;
    files_.contents[path] = std::move(node.mapped());
    files_.held_.erase(path_);
    files_.held_.insert(path);
    path_ = path;
    return true;
  }

 private:
  MemoryFiles& files_;
  std::string path_;
};

bool MemoryFiles::ReadInto(std::string& bytes, const std::string& path) {
  const auto found = contents.find(path);
  if (found == contents.end()) return false;
  bytes = found->second;
  if (const auto failing = fail.readAfter.find(path); failing != fail.readAfter.end()) {
    bytes.resize(std::min(bytes.size(), failing->second));
    throw Error(errors::DeviceInputOutput, "Cannot read " + path);
  }
  return true;
}

bool MemoryFiles::Delete(const std::string& path) {
  if (!contents.contains(path)) return true;
  if (fail.remove.contains(path)) return false;
  contents.erase(path);
  return true;
}

std::unique_ptr<OutputFile> MemoryFiles::OpenForWriting(const std::string& path) {
  if (fail.open.contains(path) || held_.contains(path)) return nullptr;
  return std::make_unique<Output>(*this, path);
}

}  // namespace velkor
