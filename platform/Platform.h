// platform/Platform.h: bundles references to every seam, for the control.
#pragma once

namespace velkor {

class CacheUtilities;
class Clock;
class CommonDialogs;
class Environment;
class Files;
class Forms;
class InputBoxes;
class LocaleApi;
class MessageBoxes;
class OutlookApplication;
class Printer;
class ProgressReports;
class Registry;
class ScrollBars;
class Settings;
class Shell;

/// References to everything outside; the host owns them and outlives the control.
struct Platform {
  CacheUtilities& cacheUtilities;
  Clock& clock;
  CommonDialogs& dialogs;
  Environment& environment;
  Files& files;
  Forms& forms;
  InputBoxes& inputs;
  LocaleApi& locale;
  MessageBoxes& messages;
  OutlookApplication& outlook;
  Printer& printer;
  ProgressReports& progress;
  Registry& registry;
  ScrollBars& scrollBars;
  Settings& settings;
  Shell& shell;
};

}  // namespace velkor
