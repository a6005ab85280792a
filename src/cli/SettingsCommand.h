#pragma once
// `zephyrdock settings`: shows, changes and resets the stored settings that the application
// starts from, by their stored keys and in their stored forms.

namespace CLI {
class App;
}

namespace zd::cli {

struct Context;

void addSettingsCommand(CLI::App& app, Context& context);

}  // namespace zd::cli
