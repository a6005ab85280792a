#pragma once
// `zephyrdock check DIR [--store mac-app-store|flathub]`: reads every PNG under a run folder as
// the store's upload would and names, per file, what it would refuse; exit status 0 only when
// every picture passes. Run before uploading, or by CI after a headless shoot.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addCheckCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
