// calendar/ics/file/FileAttributes.h: what a file has besides its name and its bytes.
#pragma once

namespace velkor {

/// Gives an open file the owner, the group, the permissions, the access control list and the
/// extended attributes of another.
/// @return false when it has not got all of them, but for what only the system sets (security.*,
/// trusted.*)
bool CopyAttributes(int from, int to);

}  // namespace velkor
