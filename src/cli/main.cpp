// zephyrdock, the command line: the same capture run as the application, without a window.
#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
    CLI::App app{"Zephyrdock: store and marketing screenshots of another application", "zephyrdock"};
    app.require_subcommand(0, 1);
    CLI11_PARSE(app, argc, argv);
    return 0;
}
