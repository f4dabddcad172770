// hosts/yearplan/main.cpp: the yearplan program.
#include <QGuiApplication>
#include <iostream>
#include <string>
#include <vector>

#include "hosts/yearplan/CommandLine.h"
#include "hosts/yearplan/Commands.h"
#include "support/values/Error.h"

namespace {

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int WrongUsage = 2;

/// The toolkit's remarks about its surroundings are nothing that a user of a terminal can mend.
void KeepErrors(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::cerr << text.toStdString() << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  // Pictures need fonts but no screen.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(KeepErrors);
  try {
    const velkor::CommandLine line =
        velkor::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    const QGuiApplication application(argc, argv);
    velkor::RunCommand(line, std::cout, std::cerr);
    std::cout.flush();
    if (std::cout) return Done;
    std::cerr << "yearplan: the output could not be written\n";
  } catch (const velkor::UsageError& error) {
    std::cerr << "yearplan: " << error.what() << "\nTry yearplan --help.\n";
    return WrongUsage;
  } catch (const velkor::Error& error) {
    std::cerr << "yearplan: " << error.Description() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "yearplan: " << error.what() << '\n';
  }
  return Failed;
}
