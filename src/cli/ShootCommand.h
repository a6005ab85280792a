#pragma once
// `zephyrdock shoot`: runs a capture: the same run as the application's take button.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addShootCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
