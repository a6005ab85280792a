#pragma once
// Every side effect the core may cause, reached through one object that the face (the
// application or the command line) builds at start and tests build from fakes. Pointers are
// not owned; each interface lives in its own header in this folder.

#include "model/HostPlatform.h"

namespace zd {

class Clock;
class WorkerPool;
class ScreenBackend;
class ImageCodec;
class WindowListBackend;
class CaptureBackend;
class SpacesBackend;
class WindowSizingBackend;
class ProcessBackend;
class LanguageOverrideBackend;
class AppearanceBackend;
class TextRecognitionBackend;
class AccessibleMenuBackend;
class CanvasFactory;
class SettingsStore;
class DialogBackend;

struct Environment {
    Clock* clock = nullptr;                        // waits, timers, the UI thread's queue
    WorkerPool* workers = nullptr;                 // blocking work off the UI thread
    WorkerPool* pictureWorkers = nullptr;          // a run's composing and encoding, else workers
    ScreenBackend* screens = nullptr;              // main screen frame, visible frame, scale
    ImageCodec* images = nullptr;                  // picture files in, PNG out
    WindowListBackend* windowList = nullptr;       // the window server's list of windows
    CaptureBackend* capture = nullptr;             // shareable content, window and stack capture
    SpacesBackend* spaces = nullptr;               // desktops
    WindowSizingBackend* sizing = nullptr;         // a window's size and position
    ProcessBackend* processes = nullptr;           // running applications, launch, terminate
    LanguageOverrideBackend* languageOverride = nullptr;  // per-application language keys
    AppearanceBackend* appearance = nullptr;       // the system's Light or Dark
    TextRecognitionBackend* textRecognition = nullptr;    // reading the menu bar's titles
    AccessibleMenuBackend* menus = nullptr;               // the target's own menus, if readable
    CanvasFactory* canvases = nullptr;             // drawing surfaces for composition
    SettingsStore* settings = nullptr;             // the typed settings store
    DialogBackend* dialogs = nullptr;              // folder chooser, alerts, reveal in file manager
    HostPlatform platform = HostPlatform::macOS;   // whose words a failure speaks in
};

}  // namespace zd
