#pragma once
// `zephyrdock spaces`: lists the desktops a multiple-windows run can be limited to.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addSpacesCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
