// exchange/XmlDocument.h: the exported file, as the bytes that are written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/LocaleApi.h"

namespace velkor {

class CategoryTable;
struct CalEvent;

/// The categories with their colours, then the appointments that are added, all in UTF-8. Texts are
/// written as they are, in CDATA sections, without escaping, an identifier and the host outside of
/// them; characters that XML forbids are left out.
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
  void PutText(std::string_view text);
  void PutCategories(const CategoryTable& categories);

  LocaleApi& locale_;
  const CodePage page_;
  std::vector<std::string> pieces_;
  bool hasAppointments_ = false;
};

}  // namespace velkor
