// refresh/RefreshYear.h: reads a year of a calendar folder and replaces its cache file.
#pragma once

#include <functional>
#include <string>

#include "model/CachePaths.h"
#include "model/SynchResult.h"
#include "span/DisplaySpan.h"

namespace velkor {

class Files;
class LocaleApi;
class OutlookApplication;
struct RefreshInputs;

struct RefreshRequest {
  DisplaySpan span;
  CachePaths paths;
  std::string folderId;
  std::string storeId;
};

/// What a cache utility was handed, as a request.
RefreshRequest RequestOf(const RefreshInputs& inputs);

struct RefreshAnswer {
  SynchResult result = SynchResult::NothingToReport;
  /// The calendar program's error number; 0 for none.
  long error = 0;
  /// Its words, for a log or a terminal.
  std::string description;
  /// Records written.
  std::size_t count = 0;
};

/// Fetches every occurrence of the span, writes the work file and puts it in the cache file's
/// place in one step: whatever stops this, the cache file is the old one or the new one. Colour
/// records are no appointments and stay out.
/// @param proceed  asked after `open` and before each item; false stops with NothingToReport, the
/// cache file untouched
/// @param open  called before the items are read, once nobody else can replace the cache file any
/// more: whoever replaces it last has read last. May throw Error.
RefreshAnswer RefreshYear(const RefreshRequest& request, OutlookApplication& outlook, Files& files,
                          LocaleApi& locale, const std::function<bool()>& proceed = {},
                          const std::function<void()>& open = {});

}  // namespace velkor
