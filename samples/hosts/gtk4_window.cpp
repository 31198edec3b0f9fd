// A week of steps in a window of GTK 4: gtk4_window APP_BIN DATA, such as samples/app/bin
// samples/data/bar-week.csv.
#include <MelkarCommon/gtk4/chart.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const melkar::ChartLooks looks{"BAR_WEEK", argv[1]};
    const std::string data = argv[2];
    const auto app = Gtk::Application::create("org.melkar.Steps");
    app->signal_activate().connect([&] {
        auto* const window = new Gtk::Window();
        auto* const chart = Gtk::make_managed<melkar::gtk4::Chart>(melkar::MakeGraph<CBarGraph>, looks, data);
        chart->signal_day().connect([](long day) { std::cout << "day " << day << std::endl; });
        window->set_title("Steps");
        window->set_child(*chart);
        window->signal_hide().connect([window] { delete window; });
        app->add_window(*window);
        window->show();
    });
    return app->run();
}
