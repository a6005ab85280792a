#pragma once
// `zephyrdock targets`: lists the windows a run can capture.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addTargetsCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
