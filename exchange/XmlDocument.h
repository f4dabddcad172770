// exchange/XmlDocument.h: the exported file, as bytes in the system's ANSI code page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/LocaleApi.h"

namespace velkor {

class CategoryTable;
struct CalEvent;

/// The categories with their colours, then the appointments that are added. The declaration names
/// UTF-8, which is true of subjects, bodies and locations alone: names of categories and
/// identifiers are in the code page. Texts are written as they are, in CDATA sections, without
/// escaping, an identifier and the host outside of them.
class XmlDocument {
 public:
  /// @param locale  outlives this
  /// @param host    of the namespace's address
  XmlDocument(LocaleApi& locale, std::string_view host, const CategoryTable& categories);

  /// Opens the list of appointments; a document without this call has none.
  void BeginAppointments();
  /// After BeginAppointments. The event's dates are valid.
  void AddAppointment(const CalEvent& event, std::string_view body, std::string_view location);
  /// Closes all that is open; nothing is added after this.
  void End();

  /// The bytes in pieces of a size that needs no second copy while the document grows.
  const std::vector<std::string>& Pieces() const { return pieces_; }

 private:
  void Put(std::string_view bytes);
  /// A text in the code page, and one whose UTF-8 bytes are to stand in the file.
  void PutAnsi(std::string_view text);
  void PutUtf8(std::string_view text);
  void PutCategories(const CategoryTable& categories);

  LocaleApi& locale_;
  const CodePage page_;
  std::vector<std::string> pieces_;
  bool hasAppointments_ = false;
};

}  // namespace velkor
