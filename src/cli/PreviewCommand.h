#pragma once
// `zephyrdock preview`: renders the planned pictures with placeholders in place of captures.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addPreviewCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
