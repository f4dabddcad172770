// tests/hosts/ExportCommandTest.cpp: `yearplan export` as its users start it.
#include <gmock/gmock.h>

#include <QDir>
#include <QXmlStreamReader>
#include <vector>

#include "model/ColourRecord.h"
#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ExportCommand : public Yearplan {
 protected:
  /// The texts of all elements of a name, in order. Fails the test where the file is no XML.
  std::vector<std::string> Texts(const QString& name, const char* element) const {
    QXmlStreamReader xml(Bytes(name));
    std::vector<std::string> texts;
    while (!xml.atEnd()) {
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QString(element)) {
        texts.push_back(xml.readElementText().toStdString());
      }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return texts;
  }
};

QByteArray Named(const QByteArray& uid, const QByteArray& lines) {
  return Event(uid, "SUMMARY:" + uid + "\r\n" + lines);
}

QByteArray OneADay(const QByteArray& since) {
  return "DTSTART;VALUE=DATE:" + since + "\r\nRRULE:FREQ=YEARLY\r\n";
}

TEST_F(ExportCommand, HoldsYearsThatWereNeverShownAndWhatTheirItemsSay) {
  Write("team.ics",
        CalendarOf(Named("Trip & <more>",
                         "DTSTART:20250203T090500\r\nDTEND:20250203T100000\r\n"
                         "CATEGORIES:Travel\r\nLOCATION:Köln\r\n"
                         "DESCRIPTION:two\\nlines\r\n") +
                   Named("Yearly", OneADay("20240105")) + "BEGIN:VEVENT\r\nEND:VEVENT\r\n"));
  Write("out.xml", QByteArray(100'000, 'x'));
  const Outcome outcome =
      Run({"export", "team.ics", "--from", "2024", "--to", "2025", "-o", "out.xml"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out,
            "Years 2024 to 2025, 3 appointments, 2 categories: " + Path("out.xml") + "\n");
  EXPECT_EQ(std::count(outcome.messages.begin(), outcome.messages.end(), '\n'), 1)
      << "told once, not once a year: " << outcome.messages;
  EXPECT_THAT(Texts("out.xml", "Text"), ElementsAre("Travel", "Other"));
  EXPECT_THAT(Texts("out.xml", "Subject"), ElementsAre("Yearly", "Yearly", "Trip & <more>"));
  EXPECT_THAT(Texts("out.xml", "StartDateTime"),
              ElementsAre("2024-01-05T00:00:00", "2025-01-05T00:00:00", "2025-02-03T09:05:00"));
  EXPECT_THAT(Texts("out.xml", "Location"), ElementsAre("", "", "Köln"));
  EXPECT_THAT(Texts("out.xml", "CategoryList"), ElementsAre("", "", "Travel"));
}

TEST_F(ExportCommand, LongSpansAreWholeAndYearsBeginWithTheFirstMonth) {
  Write("team.ics", CalendarOf(Named("Yearly", OneADay("19000601"))));
  ASSERT_EQ(Run({"export", "team.ics", "--from", "1989", "--to", "2030", "-o", "a.xml"}).code, 0);
  const auto starts = Texts("a.xml", "StartDateTime");
  ASSERT_EQ(starts.size(), 42U);
  EXPECT_EQ(starts.front(), "1989-06-01T00:00:00");
  EXPECT_EQ(starts.back(), "2030-06-01T00:00:00");
  ASSERT_EQ(Run({"export", "team.ics", "--from", "1999", "--first-month", "7", "-o", "a.xml"}).code,
            0);
  EXPECT_THAT(Texts("a.xml", "StartDateTime"), ElementsAre("2000-06-01T00:00:00"));
}

TEST_F(ExportCommand, TakesWhatTheFilterAndTheLegendLetThrough) {
  Write("team.ics", CalendarOf(Named(QByteArray::fromStdString(colour_record::SubjectOf("Rooms")),
                                     "DTSTART:20110101T013000\r\nDESCRIPTION:"
                                     "--DO NOT EDIT LIST MANUALLY--\\nLab|255\\nRest|9\r\n") +
                               Named("a", OneADay("20260105") + "CATEGORIES:Lab,Hall\r\n") +
                               Named("b", OneADay("20260106") + "CATEGORIES:Hall\r\n") +
                               Named("c", OneADay("20260107"))));
  const QStringList command{"export", "team.ics", "--from", "2026", "--title", "Rooms", "-o", "a"};
  EXPECT_EQ(Run(QStringList(command) << "--filter"
                                     << "Hall")
                .code,
            0);
  EXPECT_THAT(Texts("a", "Subject"), ElementsAre("a", "b"));
  EXPECT_THAT(Texts("a", "Colour"), ElementsAre("255", "9"));
  EXPECT_EQ(Run(QStringList(command) << "--filter"
                                     << "Hall, Lab"
                                     << "--match-all")
                .code,
            0);
  EXPECT_THAT(Texts("a", "Subject"), ElementsAre("a"));
  EXPECT_EQ(Run(QStringList(command) << "--hide-non-category").code, 0);
  EXPECT_THAT(Texts("a", "Subject"), ElementsAre("a"));
  const Outcome misspelt = Run(QStringList(command) << "--filter"
                                                    << "hall");
  EXPECT_EQ(misspelt.code, 0);
  EXPECT_THAT(misspelt.messages, HasSubstr("\"hall\""));
  EXPECT_THAT(Texts("a", "Subject"), IsEmpty());
  EXPECT_THAT(Run(QStringList(command) << "--categories-only").out, HasSubstr("2 categories: "));
  EXPECT_FALSE(Bytes("a").contains("<Appointments>"));
}

TEST_F(ExportCommand, FailsWithoutLeavingAFile) {
  const QByteArray calendar = Calendar(3);
  Write("team.ics", calendar);
  Write("file", "kept");
  ASSERT_TRUE(QDir(File("")).mkpath("folder/inside"));
  ASSERT_TRUE(QFile::link(File("team.ics"), File("link.xml")));
  const std::pair<const char*, const char*> failures[] = {
      {"file/below.xml", "Failed to save file. "},
      {"absent/a.xml", "Failed to save file. "},
      {"folder", "Failed to save file. "},
      {"link.xml", "the calendar itself"},
  };
  for (const auto& [target, words] : failures) {
    const Outcome outcome = Run({"export", "team.ics", "--from", "2026", "-o", target});
    EXPECT_EQ(outcome.code, 1) << target;
    EXPECT_EQ(outcome.out, "") << target;
    EXPECT_THAT(outcome.messages, HasSubstr(words)) << target;
  }
  EXPECT_EQ(Bytes("team.ics"), calendar);
  EXPECT_EQ(Bytes("file"), "kept");
  EXPECT_TRUE(QFile::exists(File("folder/inside")));
  EXPECT_EQ(Run({"export", "absent.ics", "-o", "a.xml"}).code, 1);
  EXPECT_FALSE(QFile::exists(File("a.xml")));
}

}  // namespace
}  // namespace velkor
