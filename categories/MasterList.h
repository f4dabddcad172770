// categories/MasterList.h: the category names that Outlook itself offers its user.
#pragma once

#include <string>
#include <vector>

namespace velkor {

class MessageBoxes;
class OutlookApplication;
class Registry;

/// The names of the customised master category list of this Outlook version, in the order of the
/// list, without blanks around them and without empty ones. None when the registry holds no list.
/// Throws what Outlook throws when it is asked for its version.
std::vector<std::string> MasterCategories(OutlookApplication& outlook, Registry& registry,
                                          MessageBoxes& messages);

}  // namespace velkor
