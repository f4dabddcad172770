// calendar/dav/DavXml.cpp: one loop over the tokens of QXmlStreamReader that keeps its limits.
#include "calendar/dav/DavXml.h"

#include <QBuffer>
#include <QByteArray>
#include <QXmlStreamReader>
#include <algorithm>
#include <cstddef>
#include <iterator>

#include "calendar/net/NetworkFault.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr int Deepest = 64;
constexpr std::size_t MostResponses = 1'000'000;
/// Of elements, names or properties in one response.
constexpr std::size_t MostOfAKind = 2'000;
/// The library compares every two attributes of a tag.
constexpr std::size_t LongestTag = 8'192;

[[noreturn]] void FailToUnderstand(const std::string& what) {
  throw NetworkFault(NetworkFault::Kind::NotUnderstood,
                     "The server's answer is not that of a calendar server: " + what + ".");
}

/// Where the part of the text that begins at `at` and ends with `end` is over.
std::size_t AfterPart(std::string_view text, std::size_t at, std::string_view end) {
  const std::size_t found = text.find(end, at);
  return found == std::string_view::npos ? text.size() : found + end.size();
}

/// Where the tag that begins at `at` is over; a ">" within quotes does not end it.
std::size_t AfterTag(std::string_view text, std::size_t at) {
  char quote = 0;
  const std::size_t limit = std::min(text.size(), at + LongestTag);
  for (std::size_t i = at; i < limit; ++i) {
    const char c = text[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '>') {
      return i + 1;
    } else if (c == '"' || c == '\'') {
      quote = c;
    }
  }
  if (limit == text.size()) return limit;
  FailToUnderstand("a tag is too long");
}

void CheckTags(std::string_view text) {
  std::size_t at = text.find('<');
  while (at != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("<![CDATA[")) {
      at = AfterPart(text, at, "]]>");
    } else if (rest.starts_with("<!--")) {
      at = AfterPart(text, at, "-->");
    } else if (rest.starts_with("<!")) {
      FailToUnderstand("it declares a document type");
    } else {
      at = AfterTag(text, at);
    }
    at = text.find('<', at);
  }
}

/// Calendar texts have CRLF at their line ends; XML leaves of that a LF (XML 1.0 section 2.11).
std::string WithLineEnds(const std::string& text) {
  std::string result;
  result.reserve(text.size() + text.size() / 32);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) result += '\r';
    result += text[i];
  }
  return result;
}

int StatusIn(std::string_view line) {
  const std::size_t blank = line.find(' ');
  if (blank == std::string_view::npos) return 0;
  return static_cast<int>(ParseInteger(line.substr(blank + 1, 3)).value_or(0));
}

/// Walks through the elements of a document. Every element that Enter opens is left by the caller
/// through Enter having answered false, or by Skip.
class Elements {
 public:
  explicit Elements(std::string_view text)
      : bytes_(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()))),
        buffer_(&bytes_) {
    CheckTags(text);
    buffer_.open(QIODevice::ReadOnly);
    xml_.setDevice(&buffer_);
  }

  /// Opens the next element within the one that is open.
  /// @return false at the end of that, which is then left
  bool Enter() {
    while (true) {
      const auto token = Take();
      if (token == QXmlStreamReader::StartElement) return true;
      if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::EndDocument) {
        return false;
      }
    }
  }

  std::string Name() const {
    return xml_.namespaceUri().toUtf8().toStdString() + " " + xml_.name().toUtf8().toStdString();
  }
  std::string NameAttribute() const {
    return xml_.attributes().value(QLatin1String("name")).toUtf8().toStdString();
  }

  /// Leaves the open element and all within it.
  void Skip() {
    for (const int outside = depth_ - 1; depth_ > outside;) Take();
  }

  /// Leaves the open element.
  DavValue TakeValue() {
    DavValue value;
    value.name = Name();
    const int outside = depth_ - 1;
    QString text;
    QString inner;
    while (depth_ > outside) {
      const auto token = Take();
      if (token == QXmlStreamReader::Characters) {
        (depth_ == outside + 1 ? text : inner).append(xml_.text());
      } else if (token == QXmlStreamReader::StartElement) {
        inner.clear();
        if (value.names.size() + 2 > MostOfAKind) FailToUnderstand("a property is too long");
        value.names.push_back(Name());
        if (std::string name = NameAttribute(); !name.empty()) value.names.push_back(name);
      } else if (token == QXmlStreamReader::EndElement && depth_ > outside && Name() == dav::Href) {
        value.hrefs.push_back(inner.trimmed().toStdString());
      }
    }
    value.text = text.toStdString();
    if (value.name == dav::CalendarData) value.text = WithLineEnds(value.text);
    return value;
  }

 private:
  QXmlStreamReader::TokenType Take() {
    const auto token = xml_.readNext();
    if (token == QXmlStreamReader::Invalid) FailToUnderstand("it is no whole XML document");
    if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::EntityReference) {
      FailToUnderstand("it declares a document type");
    }
    if (token == QXmlStreamReader::StartElement && ++depth_ > Deepest) {
      FailToUnderstand("its elements are nested too deeply");
    }
    if (token == QXmlStreamReader::EndElement) --depth_;
    return token;
  }

  QByteArray bytes_;
  QBuffer buffer_;
  QXmlStreamReader xml_;
  int depth_ = 0;
};

void ReadPropstat(Elements& elements, DavResponse& response) {
  std::vector<DavValue> properties;
  int status = 0;
  while (elements.Enter()) {
    const std::string name = elements.Name();
    if (name == dav::Status) {
      status = StatusIn(elements.TakeValue().text);
    } else if (name == dav::Prop) {
      while (elements.Enter()) {
        if (properties.size() >= MostOfAKind) FailToUnderstand("it tells too many properties");
        properties.push_back(elements.TakeValue());
      }
    } else {
      elements.Skip();
    }
  }
  if (status != 0 && status / 100 != 2) return;
  if (response.properties.size() + properties.size() > MostOfAKind) {
    FailToUnderstand("it tells too many properties");
  }
  std::ranges::move(properties, std::back_inserter(response.properties));
}

DavResponse ReadResponse(Elements& elements) {
  DavResponse response;
  while (elements.Enter()) {
    const std::string name = elements.Name();
    if (name == dav::Href) {
      response.href = Trim(elements.TakeValue().text);
    } else if (name == dav::Status) {
      response.status = StatusIn(elements.TakeValue().text);
    } else if (name == dav::Propstat) {
      ReadPropstat(elements, response);
    } else {
      elements.Skip();
    }
  }
  return response;
}

}  // namespace

bool DavValue::Holds(std::string_view elementName) const {
  return std::ranges::find(names, elementName) != names.end();
}

const DavValue* DavResponse::Find(std::string_view name) const {
  const auto found = std::ranges::find(properties, name, &DavValue::name);
  return found == properties.end() ? nullptr : &*found;
}

std::string DavResponse::Text(std::string_view name) const {
  const DavValue* value = Find(name);
  return value == nullptr ? std::string()
                          : QString::fromStdString(value->text).trimmed().toStdString();
}

std::string ReadMultistatus(std::string_view body,
                            const std::function<void(DavResponse&&)>& visit) {
  Elements elements(body);
  if (!elements.Enter() || elements.Name() != dav::Multistatus) {
    FailToUnderstand("it begins like another document");
  }
  std::string token;
  std::size_t responses = 0;
  while (elements.Enter()) {
    const std::string name = elements.Name();
    if (name == dav::Response) {
      if (++responses > MostResponses) {
        throw NetworkFault(NetworkFault::Kind::TooLarge, "The calendar has too many appointments.");
      }
      visit(ReadResponse(elements));
    } else if (name == dav::SyncToken) {
      token = QString::fromStdString(elements.TakeValue().text).trimmed().toStdString();
    } else {
      elements.Skip();
    }
  }
  return token;
}

std::vector<DavValue> ReadConditions(std::string_view body) try {
  Elements elements(body);
  if (!elements.Enter() || elements.Name() != dav::Fault) return {};
  std::vector<DavValue> conditions;
  while (conditions.size() < MostOfAKind && elements.Enter()) {
    conditions.push_back(elements.TakeValue());
  }
  return conditions;
} catch (const NetworkFault&) {
  return {};
}

}  // namespace velkor
