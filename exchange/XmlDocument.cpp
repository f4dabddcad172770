// exchange/XmlDocument.cpp: lines and texts of the exported file.
#include "exchange/XmlDocument.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/CalEvent.h"
#include "model/CategoryTable.h"
#include "span/Locale.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 20;

/// Whether XML has the character (Extensible Markup Language 1.0, section 2.2).
bool IsAllowed(char32_t character) {
  if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
  return character != 0xFFFE && character != 0xFFFF;
}

/// Whether XML has every character of the text; false also where it may have.
bool IsAllowed(std::string_view text) {
  // The bytes that U+FFFE and U+FFFF begin with, and some letters.
  constexpr std::string_view NoCharacters = "\xEF\xBF";
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return IsAllowed(char32_t{static_cast<unsigned char>(c)}); }) &&
         text.find(NoCharacters) == text.npos;
}

/// The text without what XML forbids.
std::string Allowed(std::string_view text) {
  if (IsAllowed(text)) return std::string(text);
  std::string allowed;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    if (IsAllowed(character)) AppendCharacter(allowed, character);
  }
  return allowed;
}

/// "yyyy-MM-ddTHH:mm:ss".
class DateTimeText {
 public:
  explicit DateTimeText(Date date) {
    const DateFields fields = date.Fields();
    Set(0, 4, fields.year);
    Set(5, 2, fields.month);
    Set(8, 2, fields.day);
    Set(11, 2, fields.hour);
    Set(14, 2, fields.minute);
    Set(17, 2, fields.second);
  }
  std::string_view Text() const { return {text_.data(), text_.size()}; }

 private:
  void Set(std::size_t at, std::size_t width, int value) {
    for (std::size_t digit = at + width; digit > at; value /= 10) {
      text_[--digit] = static_cast<char>('0' + value % 10);
    }
  }

  std::array<char, 19> text_{'0', '0', '0', '0', '-', '0', '0', '-', '0', '0',
                             'T', '0', '0', ':', '0', '0', ':', '0', '0'};
};

}  // namespace

XmlDocument::XmlDocument(LocaleApi& locale, std::string_view host, const CategoryTable& categories)
    : locale_(locale), page_(Locale::BytePage(locale)) {
  Put("<?xml version=\"1.0\" encoding=\"utf-8\" ?>\r\n"
      "<VelkorData xmlns = \"http://");
  PutText(host);
  Put("/Schemas/VelkorData01.xsd\">\r\n");
  PutCategories(categories);
}

void XmlDocument::PutCategories(const CategoryTable& categories) {
  Put("\t<Categories>\r\n");
  for (const Category& category : categories.All()) {
    Put("\t\t<Category>\r\n"
        "\t\t\t<Text><![CDATA[");
    PutText(category.name);
    Put("]]></Text>\r\n"
        "\t\t\t<Colour>");
    Put(std::to_string(category.colour.value));
    Put("</Colour>\r\n"
        "\t\t</Category>\r\n");
  }
  Put("\t</Categories>\r\n");
}

void XmlDocument::BeginAppointments() {
  hasAppointments_ = true;
  Put("\t<Appointments>\r\n");
}

void XmlDocument::AddAppointment(const CalEvent& event, std::string_view body,
                                 std::string_view location) {
  Put("\t\t<Appointment>\r\n"
      "\t\t\t<Subject><![CDATA[");
  PutText(event.Subject);
  Put("]]></Subject>\r\n"
      "\t\t\t<CategoryList><![CDATA[");
  PutText(event.Categories);
  Put("]]></CategoryList>\r\n"
      "\t\t\t<StartDateTime>");
  Put(DateTimeText(event.StartDate).Text());
  Put("</StartDateTime>\r\n"
      "\t\t\t<EndDateTime>");
  Put(DateTimeText(event.EndDate).Text());
  Put("</EndDateTime>\r\n"
      "\t\t\t<Body><![CDATA[");
  PutText(body);
  Put("]]></Body>\r\n"
      "\t\t\t<Location><![CDATA[");
  PutText(location);
  Put("]]></Location>\r\n"
      "\t\t\t<ID>");
  PutText(event.EventID);
  Put("</ID>\r\n"
      "\t\t</Appointment>\r\n");
}

void XmlDocument::End() {
  if (hasAppointments_) Put("\t</Appointments>\r\n");
  Put("</VelkorData>\r\n");
}

void XmlDocument::Put(std::string_view bytes) {
  while (!bytes.empty()) {
    if (pieces_.empty() || pieces_.back().size() == PieceSize) {
      pieces_.emplace_back().reserve(PieceSize);
    }
    std::string& piece = pieces_.back();
    const std::string_view part = bytes.substr(0, PieceSize - piece.size());
    piece.append(part);
    bytes.remove_prefix(part.size());
  }
}

void XmlDocument::PutText(std::string_view text) {
  // Most are their own bytes in the file.
  if (AsciiLength(text) == text.size() && IsAllowed(text)) {
    Put(text);
  } else {
    const std::string utf8 = Locale::Utf8Encode(locale_, Allowed(text));
    Put(locale_.ToCodePage(utf8, page_));
  }
}

}  // namespace velkor
