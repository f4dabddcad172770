// tests/hosts/TranscriptsTest.cpp: the commands of tests/data/commands, each beside what it prints.
//
// A line begins a file ("file NAME", with its lines after a blank), runs the program ("$ ..."),
// or says of the last run, which prints nothing and ends with 0 unless told otherwise: what it
// prints (after a blank), what its messages hold ("! ..."), its code ("exit N"), and how often a
// text stands in a file ("N of TEXT in NAME"). Others are titles: each has a folder of its own.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "tests/hosts/YearplanCase.h"
#include "values/Text.h"

namespace velkor {
namespace {

struct Step {
  std::string line;
  /// Those after a blank that follow.
  std::string text;
  int number = 0;
};

struct Transcript {
  std::string title;
  std::vector<Step> steps;
};

bool IsStep(const std::string& line) {
  return line.starts_with("file ") || line.starts_with("$ ") || line.starts_with("! ") ||
         line.starts_with("exit ") || line.find(" of ") < 4;
}

std::vector<Transcript> TranscriptsIn(const std::filesystem::path& path) {
  std::vector<Transcript> all;
  std::ifstream file(path);
  int number = 1;
  for (std::string line; std::getline(file, line); ++number) {
    if (line.starts_with(' ')) {
      all.back().steps.back().text += line.substr(1) + "\n";
    } else if (IsStep(line)) {
      all.back().steps.push_back({line, {}, number});
    } else if (!line.empty()) {
      all.push_back({line, {}});
    }
  }
  return all;
}

class Transcripts : public Yearplan, public testing::WithParamInterface<Transcript> {
 protected:
  void ExpectOccurrences(const QString& step) const {
    const qsizetype of = step.indexOf(" of ");
    const qsizetype in = step.lastIndexOf(" in ");
    const QByteArray text = step.mid(of + 4, in - of - 4).toUtf8();
    EXPECT_EQ(Bytes(step.mid(in + 4)).replace("\r\n ", "").count(text), step.left(of).toInt())
        << Bytes(step.mid(in + 4)).toStdString();
  }
};

TEST_P(Transcripts, AreWhatTheProgramSays) {
  Outcome last;
  bool isTold = true;
  int code = 0;
  const auto end = [&] {
    EXPECT_EQ(std::exchange(last.code, 0), std::exchange(code, 0));
    EXPECT_TRUE(isTold || last.messages.empty()) << last.messages;
  };
  last.code = 0;
  for (const Step& step : GetParam().steps) {
    SCOPED_TRACE("line " + std::to_string(step.number) + ": " + step.line);
    const QString line = QString::fromStdString(step.line);
    if (line.startsWith("file ")) {
      Write(line.mid(5), QByteArray::fromStdString(step.text).replace("\n", "\r\n"));
    } else if (line.startsWith("$ ")) {
      end();
      last = Run(QProcess::splitCommand(line.mid(2)));
      for (std::string* said : {&last.out, &last.messages}) {
        *said = Replace(*said, Path("") + "/", "");
      }
      isTold = false;
      EXPECT_EQ(last.out, step.text);
    } else if (line.startsWith("! ")) {
      EXPECT_THAT(last.messages, testing::HasSubstr(step.line.substr(2)));
      isTold = true;
    } else if (line.startsWith("exit ")) {
      code = line.mid(5).toInt();
    } else {
      ExpectOccurrences(line);
    }
  }
  end();
}

std::vector<Transcript> AllTranscripts() {
  std::vector<Transcript> all;
  for (const auto& file : std::filesystem::directory_iterator(TEST_DATA "commands")) {
    for (Transcript& one : TranscriptsIn(file.path())) all.push_back(std::move(one));
  }
  return all;
}

std::string NameOf(const testing::TestParamInfo<Transcript>& info) {
  std::string name;
  for (const char c : info.param.title)
    name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Commands, Transcripts, testing::ValuesIn(AllTranscripts()), NameOf);

}  // namespace
}  // namespace velkor
