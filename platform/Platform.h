// platform/Platform.h: the seams in one hand, given to the control once.
#pragma once

namespace velkor {

class CacheUtilities;
class Clock;
class Environment;
class Files;
class Forms;
class LocaleApi;
class MessageBoxes;
class OutlookApplication;
class Registry;
class Settings;
class Shell;

/// References to everything outside; the host owns them and outlives the control.
struct Platform {
  CacheUtilities& cacheUtilities;
  Clock& clock;
  Environment& environment;
  Files& files;
  Forms& forms;
  LocaleApi& locale;
  MessageBoxes& messages;
  OutlookApplication& outlook;
  Registry& registry;
  Settings& settings;
  Shell& shell;
};

}  // namespace velkor
