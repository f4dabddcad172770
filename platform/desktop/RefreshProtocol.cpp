// platform/desktop/RefreshProtocol.cpp: commands and reports as lines of JSON.
#include "platform/desktop/RefreshProtocol.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <limits>

#include "platform/desktop/QtText.h"

namespace velkor::refresh_protocol {
namespace {

constexpr qsizetype MostWords = 4000;

std::string Line(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() + '\n';
}

std::optional<QJsonObject> ParseLine(std::string_view line) {
  const QJsonDocument document = QJsonDocument::fromJson(
      QByteArray::fromRawData(line.data(), static_cast<qsizetype>(line.size())));
  if (!document.isObject()) return std::nullopt;
  return document.object();
}

/// Collects members and remembers whether each was there with its kind and range.
class Members {
 public:
  explicit Members(const QJsonObject& object) : object_(object) {}

  std::string Text(const char* name) {
    const QJsonValue value = object_.value(QLatin1String(name));
    complete_ = complete_ && value.isString();
    return value.toString().toStdString();
  }
  template <typename Number>
  Number Whole(const char* name) {
    const QJsonValue value = object_.value(QLatin1String(name));
    // No whole number answers one of these two.
    const bool whole = value.toInteger(0) == value.toInteger(1);
    const qint64 number = value.toInteger(0);
    const bool fits = number >= std::numeric_limits<Number>::min() &&
                      number <= std::numeric_limits<Number>::max();
    complete_ = complete_ && whole && fits;
    return complete_ ? static_cast<Number>(number) : Number{};
  }
  bool Complete() const { return complete_; }

 private:
  const QJsonObject& object_;
  bool complete_ = true;
};

}  // namespace

std::string Encode(const Command& command) {
  if (!command.start) return Line({{"command", "stop"}});
  const RefreshInputs& inputs = *command.start;
  return Line({{"command", "start"},
               {"viewYear", inputs.viewYear},
               {"firstMonth", inputs.firstMonth},
               {"cacheFile", ToQt(inputs.cacheFile)},
               {"workFile", ToQt(inputs.workFile)},
               {"folderId", ToQt(inputs.folderId)},
               {"storeId", ToQt(inputs.storeId)}});
}

std::string Encode(const Report& report) {
  return Line({{"synchResult", report.synchResult},
               {"synchError", static_cast<qint64>(report.synchError)},
               {"words", ToQt(report.words).left(MostWords)}});
}

std::optional<Command> DecodeCommand(std::string_view line) {
  const auto object = ParseLine(line);
  if (!object) return std::nullopt;
  const QString name = object->value(QLatin1String("command")).toString();
  if (name == QLatin1String("stop")) return Command{};
  if (name != QLatin1String("start")) return std::nullopt;
  Members members(*object);
  RefreshInputs inputs;
  inputs.viewYear = members.Whole<int>("viewYear");
  inputs.firstMonth = members.Whole<int>("firstMonth");
  inputs.cacheFile = members.Text("cacheFile");
  inputs.workFile = members.Text("workFile");
  inputs.folderId = members.Text("folderId");
  inputs.storeId = members.Text("storeId");
  if (!members.Complete()) return std::nullopt;
  return Command{inputs};
}

std::optional<Report> DecodeReport(std::string_view line) {
  const auto object = ParseLine(line);
  if (!object) return std::nullopt;
  Members members(*object);
  Report report;
  report.synchResult = members.Whole<short>("synchResult");
  report.synchError = members.Whole<long>("synchError");
  report.words = object->value(QLatin1String("words")).toString().toStdString();
  if (!members.Complete()) return std::nullopt;
  return report;
}

}  // namespace velkor::refresh_protocol
