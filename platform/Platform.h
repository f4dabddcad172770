// platform/Platform.h: the seams in one hand, given to the control once.
#pragma once

namespace velkor {

class Clock;
class Environment;
class Files;
class LocaleApi;
class MessageBoxes;
class OutlookApplication;
class Registry;
class Settings;

/// References to everything outside; the host owns them and outlives the control.
struct Platform {
  Clock& clock;
  Environment& environment;
  Files& files;
  LocaleApi& locale;
  MessageBoxes& messages;
  OutlookApplication& outlook;
  Registry& registry;
  Settings& settings;
};

}  // namespace velkor
