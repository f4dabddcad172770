// platform/headless/ScriptedMessageBoxes.cpp: comparing messages with the script.
#include "platform/headless/ScriptedMessageBoxes.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <utility>

namespace velkor {

void EndProgram(const std::string& failure) {
  std::fprintf(stderr, "%s\n", failure.c_str());
  std::abort();
}

ScriptedMessageBoxes::ScriptedMessageBoxes(ReportFailure report)
    : report_(report ? std::move(report) : EndProgram) {}

ScriptedMessageBoxes::~ScriptedMessageBoxes() {
  if (std::uncaught_exceptions() > 0) return;
  for (const Expected& expected : expected_) report_("Message never shown: " + expected.part);
}

void ScriptedMessageBoxes::Expect(std::string part, MessageAnswer answer) {
  expected_.push_back({std::move(part), answer});
}

MessageAnswer ScriptedMessageBoxes::Show(const Message& message) {
  shown_.push_back(message);
  if (expected_.empty() || message.text.find(expected_.front().part) == std::string::npos) {
    const std::string failure = "Unexpected message: " + message.text;
    report_(failure);
    throw std::logic_error(failure);
  }
  const MessageAnswer answer = expected_.front().answer;
  expected_.pop_front();
  return answer;
}

}  // namespace velkor
