#pragma once
// `zephyrdock plan`: the pictures a run would produce with the stored settings, one line per
// picture in the order of the preview, and how many shots the run takes.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addPlanCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
