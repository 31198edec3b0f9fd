// melkar-show: a window with a chart that follows its files. `melkar show` runs it with its own arguments.

#include "commands/command.h"
#include "commands/show_options.h"
#include "kinds.h"
#include "show_window.h"

namespace {

using namespace melkar::tool;

Request RequestFrom(int argc, char** argv) {
    CLI::App app{"Shows a chart in a window that follows its files", "melkar-show"};
    app.option_defaults()->take_last();
    ShowOptions options;
    AddShowOptions(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        std::exit(app.exit(asked));
    }
    return RequestOf(options);
}

int Show(const Request& request) {
    const auto app = Gtk::Application::create("", Gio::Application::Flags::NON_UNIQUE);
    std::unique_ptr<ShowWindow> window;
    app->signal_activate().connect([&] {
        window = std::make_unique<ShowWindow>(request);
        app->add_window(*window);
        window->show();
    });
    return app->run();
}

} // namespace

int main(int argc, char** argv) {
    return ExitCodeOf([&] {
        RegisterSamples();
        return Show(RequestFrom(argc, argv));
    });
}
