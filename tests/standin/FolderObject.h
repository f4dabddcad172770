// tests/standin/FolderObject.h: folders and their collections by their names; part of the
// calendar program for tests, never shipped.
#pragma once

#include "tests/standin/ServedObject.h"

namespace velkor {

/// @param folder  in the session's store
Variant FolderAnswer(StandInSession& session, CalendarFolder& folder);

/// The folders below `parent`, or of the store for null; the one that argument 0 names when there
/// is one, since Folders("name") is its Item.
Variant FoldersAnswer(StandInSession& session, CalendarFolder* parent, const Call& call);

}  // namespace velkor
