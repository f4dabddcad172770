// calendar/ics/read/IcsAnswer.cpp: numbers in little-endian order and texts after their lengths.
#include "calendar/ics/read/IcsAnswer.h"

#include <cstdint>

#include "values/LittleEndian.h"

namespace velkor {
namespace {

constexpr std::string_view CalendarMark = "vkrRefresh 4 calendar\n";
constexpr std::string_view ErrorMark = "vkrRefresh 4 error\n";

class Writer {
 public:
  explicit Writer(std::string_view mark) : mark_(mark) {}

  void Number(std::int64_t value) { AppendLittleEndian(bytes_, value); }
  void Count(std::size_t value) { Number(static_cast<std::int64_t>(value)); }
  void Text(std::string_view text) {
    Count(text.size());
    bytes_ += text;
  }
  void Fields(const AppointmentFields& fields) {
    Text(fields.subject);
    Count(fields.categories.size());
    for (const std::string& name : fields.categories) Text(name);
    Text(fields.location);
    Text(fields.body);
    Number(fields.allDay);
  }
  void Span(Date start, Date end) {
    Number(start.Seconds());
    Number(end.Seconds());
  }
  std::string Take() {
    Writer whole({});
    whole.bytes_ = mark_;
    whole.Text(bytes_);
    return std::move(whole.bytes_);
  }

 private:
  std::string mark_;
  std::string bytes_;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  std::int64_t Number() {
    if (rest_.size() < sizeof(std::int64_t)) Fail();
    const auto value = ReadLittleEndian<std::int64_t>(rest_);
    rest_.remove_prefix(sizeof value);
    return value;
  }
  /// A count of things that take at least eight bytes each.
  std::size_t Count() {
    const std::int64_t value = Number();
    if (value < 0 || static_cast<std::uint64_t>(value) > rest_.size() / 8) Fail();
    return static_cast<std::size_t>(value);
  }
  std::string_view Text() {
    const std::int64_t size = Number();
    if (size < 0 || static_cast<std::uint64_t>(size) > rest_.size()) Fail();
    const std::string_view text = rest_.substr(0, static_cast<std::size_t>(size));
    rest_.remove_prefix(text.size());
    return text;
  }
  std::int32_t Between(std::int64_t low, std::int64_t high) {
    const std::int64_t value = Number();
    if (value < low || value > high) Fail();
    return static_cast<std::int32_t>(value);
  }
  bool Flag() { return Between(0, 1) == 1; }
  AppointmentFields Fields() {
    AppointmentFields fields;
    fields.subject = Text();
    // Lists grow as their parts come, so that a wrong count takes no memory.
    for (std::size_t count = Count(); count > 0; --count) fields.categories.emplace_back(Text());
    fields.location = Text();
    fields.body = Text();
    fields.allDay = Flag();
    return fields;
  }
  Date Moment() {
    constexpr std::int64_t Farthest = std::int64_t{4'000'000} * SecondsPerDay;
    const std::int64_t seconds = Number();
    if (seconds < -Farthest || seconds > Farthest || !Date::FromSeconds(seconds).IsValid()) Fail();
    return Date::FromSeconds(seconds);
  }
  void Span(Date& start, Date& end) {
    start = Moment();
    end = Moment();
    if (end < start) Fail();
  }
  void ExpectEnd() const {
    if (!rest_.empty()) Fail();
  }

 private:
  [[noreturn]] static void Fail() {
    throw Error(errors::CalendarFailed, "the reader's answer is not whole", "Answer");
  }
  std::string_view rest_;
};

CalendarItem ReadItem(Reader& reader) {
  CalendarItem item;
  item.entryId = reader.Text();
  item.messageClass = reader.Text();
  item.contentMark = reader.Text();
  item.lastModified = reader.Moment();
  item.fields = reader.Fields();
  reader.Span(item.start, item.end);
  item.recurring = reader.Flag();
  for (std::size_t count = reader.Count(); count > 0; --count) {
    item.changed.push_back(reader.Fields());
  }
  for (std::size_t count = reader.Count(); count > 0; --count) {
    CalendarOccurrence& occurrence = item.occurrences.emplace_back();
    reader.Span(occurrence.start, occurrence.end);
    occurrence.changed = reader.Between(-1, static_cast<std::int64_t>(item.changed.size()) - 1);
  }
  return item;
}

}  // namespace

std::string EncodeAnswer(const ParsedCalendar& calendar) {
  Writer writer(CalendarMark);
  writer.Text(calendar.name);
  writer.Text(calendar.trouble);
  writer.Count(calendar.items.size());
  for (const CalendarItem& item : calendar.items) {
    writer.Text(item.entryId);
    writer.Text(item.messageClass);
    writer.Text(item.contentMark);
    writer.Number(item.lastModified.Seconds());
    writer.Fields(item.fields);
    writer.Span(item.start, item.end);
    writer.Number(item.recurring);
    writer.Count(item.changed.size());
    for (const AppointmentFields& fields : item.changed) writer.Fields(fields);
    writer.Count(item.occurrences.size());
    for (const CalendarOccurrence& occurrence : item.occurrences) {
      writer.Span(occurrence.start, occurrence.end);
      writer.Number(occurrence.changed);
    }
  }
  writer.Count(calendar.diagnostics.size());
  for (const Diagnostic& diagnostic : calendar.diagnostics) {
    writer.Text(diagnostic.file);
    writer.Number(diagnostic.line);
    writer.Number(diagnostic.severity == Severity::Warning);
    writer.Text(diagnostic.text);
  }
  return writer.Take();
}

std::string EncodeAnswer(const Error& error) {
  Writer writer(ErrorMark);
  writer.Number(error.Number());
  writer.Text(error.Description());
  return writer.Take();
}

std::string_view TakeAnswer(std::string_view& bytes) {
  for (const std::string_view mark : {CalendarMark, ErrorMark}) {
    if (!bytes.starts_with(mark)) continue;
    Reader reader(bytes.substr(mark.size()));
    const std::string_view body = reader.Text();
    const std::size_t size = static_cast<std::size_t>(body.data() - bytes.data()) + body.size();
    const std::string_view answer = bytes.substr(0, size);
    bytes.remove_prefix(size);
    return answer;
  }
  throw Error(errors::CalendarFailed, "the reader gave no answer", "Answer");
}

ParsedCalendar DecodeAnswer(std::string_view bytes) {
  const bool isError = bytes.starts_with(ErrorMark);
  if (!isError && !bytes.starts_with(CalendarMark)) {
    throw Error(errors::CalendarFailed, "the reader gave no answer", "Answer");
  }
  Reader whole(bytes.substr(isError ? ErrorMark.size() : CalendarMark.size()));
  Reader reader(whole.Text());
  whole.ExpectEnd();
  if (isError) {
    const long number = reader.Between(0, 0xFFFF);
    throw Error(number, std::string(reader.Text()), "Calendar");
  }
  ParsedCalendar calendar;
  calendar.name = reader.Text();
  calendar.trouble = reader.Text();
  for (std::size_t count = reader.Count(); count > 0; --count) {
    calendar.items.push_back(ReadItem(reader));
  }
  for (std::size_t count = reader.Count(); count > 0; --count) {
    Diagnostic diagnostic;
    diagnostic.file = reader.Text();
    diagnostic.line = reader.Between(0, 0x7FFFFFFF);
    diagnostic.severity = reader.Flag() ? Severity::Warning : Severity::Note;
    diagnostic.text = reader.Text();
    calendar.diagnostics.push_back(std::move(diagnostic));
  }
  reader.ExpectEnd();
  return calendar;
}

}  // namespace velkor
