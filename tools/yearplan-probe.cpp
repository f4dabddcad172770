// tools/yearplan-probe.cpp: reads one JSON case a line and prints one JSON answer a line.
#include <iostream>
#include <string>

#include "tools/ProbeAnswers.h"

int main() {
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << velkor::AnswerCase(line) << std::endl;
  }
  return 0;
}
