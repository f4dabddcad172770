// tests/hosts/EveryScriptTest.cpp: texts of many scripts from the calendar to every output and
// back.
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <nlohmann/json.hpp>

#include "model/ColourRecord.h"
#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

using testing::HasSubstr;

struct Script {
  const char* subject;
  const char* category;
  /// The writer of PDF files gives no text for characters beyond the basic plane.
  bool isPdfText = true;
};

constexpr Script Scripts[] = {
    {"Zażółć gęślą jaźń", "Święta"},
    {"Ξεσκεπάζω τὴν ψυχοφθόρα βδελυγμία", "Διακοπές"},
    {"Съешь ещё этих мягких французских булок", "Отпуск"},
    {"דג סקרן שט בים מאוכזב", "חופשה"},
    {"نص حكيم له سر قاطع", "إجازة"},
    {"いろはにほへと ちりぬるを 日本語", "休暇"},
    {"天地玄黃 宇宙洪荒", "假期"},
    {"Party 🎉 👩‍💻 🇯🇵", "🏖️ Urlaub", false},
};

class EveryScript : public Yearplan {
 protected:
  EveryScript() {
    QByteArray events;
    for (const Script& script : Scripts) {
      const QByteArray month = QByteArray::number(events.count("BEGIN:VEVENT") + 1);
      events += Event("in month " + month, "DTSTART;VALUE=DATE:20260" + month +
                                               "03\r\nDTEND;VALUE=DATE:20260" + month +
                                               "25\r\nSUMMARY:" + script.subject +
                                               "\r\nCATEGORIES:" + script.category + "\r\n");
    }
    Write("team.ics", CalendarOf(events));
  }
  /// What a command prints; it succeeds without a word besides.
  std::string OutOf(const QStringList& command) const {
    const Outcome outcome = Run(command);
    EXPECT_EQ(outcome.code, 0) << outcome.messages;
    EXPECT_EQ(outcome.messages, "");
    return outcome.out;
  }
  void ExpectInspected() const {
    const auto json =
        nlohmann::json::parse(OutOf({"inspect", "team.ics", "--year", "2026", "--json"}));
    ASSERT_EQ(json.at("events").size(), std::size(Scripts));
    for (std::size_t i = 0; i < std::size(Scripts); ++i) {
      EXPECT_EQ(json["events"][i]["subject"], Scripts[i].subject);
      EXPECT_EQ(json["events"][i]["categories"], Scripts[i].category);
      EXPECT_EQ(json["events"][i]["catIndex"], i + 1);
    }
  }
};

/// Letters as they are written, not as they are shaped, and no marks of direction.
QString Plain(const QByteArray& text) {
  static const QRegularExpression Marks("[\\x{200E}\\x{200F}\\x{202A}-\\x{202E}]");
  return QString::fromUtf8(text).normalized(QString::NormalizationForm_KC).remove(Marks);
}

TEST_F(EveryScript, ReachesEveryOutputUnchanged) {
  ExpectInspected();
  OutOf({"render", "team.ics", "--year", "2026", "-o", "a.pdf"});
  OutOf({"export", "team.ics", "--from", "2026", "-o", "a.xml"});
  QProcess reader;
  reader.start("pdftotext", {File("a.pdf"), "-"});
  ASSERT_TRUE(reader.waitForFinished());
  const QString pdf = Plain(reader.readAllStandardOutput());
  const QByteArray xml = Bytes("a.xml");
  QXmlStreamReader parser(xml);
  while (!parser.atEnd()) parser.readNext();
  EXPECT_FALSE(parser.hasError()) << parser.errorString().toStdString();
  const std::string legend = OutOf({"categories", "team.ics"});
  for (const Script& script : Scripts) {
    for (const char* text : {script.subject, script.category}) {
      EXPECT_TRUE(xml.contains("[CDATA[" + QByteArray(text) + "]]")) << text;
      EXPECT_TRUE(!script.isPdfText || pdf.contains(Plain(text))) << text;
    }
    EXPECT_THAT(legend, HasSubstr(std::string("  ") + script.category + "\n"));
    EXPECT_THAT(
        OutOf({"render", "team.ics", "--year", "2026", "-o", "a.svg", "--filter", script.category}),
        HasSubstr("1 of 8 events"));
  }
}

TEST_F(EveryScript, StaysInTheCalendarThroughEveryCommand) {
  for (const QStringList& task : {QStringList{"recolour", "休暇", "#123456"},
                                  {"new", "Ωmega 日本 🎉"},
                                  {"delete", "Ωmega 日本 🎉"}}) {
    OutOf(QStringList{"categories", "team.ics"} + task);
    for (const Script& script : Scripts) {
      EXPECT_TRUE(Bytes("team.ics").contains(QByteArray("\r\nSUMMARY:") + script.subject + "\r\n"));
      EXPECT_THAT(OutOf({"categories", "team.ics"}), HasSubstr(script.category));
    }
    ExpectInspected();
  }
}

TEST_F(EveryScript, AListThatWasSavedWithQuestionMarksStaysAndIsTold) {
  Write(
      "team.ics",
      Bytes("team.ics")
          .replace("END:VCALENDAR",
                   Event("record",
                         QByteArray("DTSTART:20110101T013000\r\nSUMMARY:") +
                             colour_record::SubjectOf("Default").c_str() +
                             "\r\nDESCRIPTION:--DO NOT EDIT LIST MANUALLY--\\n??????|255\\nOther|9"
                             "\r\n") +
                       "END:VCALENDAR"));
  const QByteArray before = Bytes("team.ics");
  const Outcome outcome = Run({"categories", "team.ics"});
  EXPECT_EQ(outcome.out, "#FF0000  ??????\n#090000  Other\n");
  EXPECT_THAT(outcome.messages, HasSubstr("\"??????\" for \"Отпуск\""));
  EXPECT_THAT(Run({"render", "team.ics", "--year", "2026", "-o", "a.svg"}).messages,
              HasSubstr("\"??????\" for \"Отпуск\""));
  EXPECT_EQ(Bytes("team.ics"), before);
}

TEST_F(EveryScript, ACacheFileInTheCodePageOfBeforeIsRefreshed) {
  OutOf({"refresh", "team.ics", "--year", "2026"});
  const QString cache = CacheFile();
  QFile file(cache);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  QByteArray bytes = file.readAll();
  bytes.replace("Party", "Pa\xDFty");
  file.seek(0);
  file.write(bytes);
  file.close();
  const Outcome outcome = Run({"inspect", "--cache", cache, "--year", "2026", "--json"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.messages, HasSubstr("not in UTF-8"));
  ExpectInspected();
}

}  // namespace
}  // namespace velkor
