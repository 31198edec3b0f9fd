// A window for scripts/check-widgets: gtk4_host WIDTHxHEIGHT KIND BASE SECTION DATA [DARK_BASE]. It prints what it
// hears. Keys: d turns the desktop dark or light, s saves host.png, host.svg and host.pdf, p prints into printed.pdf, r
// reloads.
#include <MelkarCommon/gtk4/chart.h>

#include <cstdio>
#include <iostream>

namespace {

void Save(melkar::gtk4::Chart& chart) {
    for (const char* name : {"host.png", "host.svg", "host.pdf", "nowhere/host.png"})
        std::cout << "saved " << name << ": " << chart.Save(name) << std::endl;
}

void PrintToFile(melkar::gtk4::Chart& chart, Gtk::Window& window) {
    const auto print = Gtk::PrintOperation::create();
    print->set_export_filename("printed.pdf");
    chart.SetUpPrint(*print);
    print->run(Gtk::PrintOperation::Action::EXPORT, window);
    std::cout << "printed" << std::endl;
}

void TurnDesktop() {
    auto dark = Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme();
    dark = !dark;
}

void OnKey(guint key, melkar::gtk4::Chart& chart, Gtk::Window& window) {
    if (key == GDK_KEY_d)
        TurnDesktop();
    else if (key == GDK_KEY_s)
        Save(chart);
    else if (key == GDK_KEY_p)
        PrintToFile(chart, window);
    else if (key == GDK_KEY_r)
        chart.Reload();
    else if (key == GDK_KEY_q)
        window.close();
}

Gtk::Window* MakeWindow(char** arguments) {
    int width = 0;
    int height = 0;
    std::sscanf(arguments[1], "%dx%d", &width, &height);
    auto* const window = new Gtk::Window();
    auto* const chart = Gtk::make_managed<melkar::gtk4::Chart>(
        melkar::FindKind(arguments[2])->make, melkar::ChartLooks{arguments[4], arguments[3]}, arguments[5]);
    if (arguments[6])
        chart->SetDarkLooks({arguments[4], arguments[6]});
    chart->SetNaturalSize(width, height);
    chart->signal_day().connect([](long day) { std::cout << "day " << day << std::endl; });
    chart->signal_dark_changed().connect([](bool isDark) { std::cout << "dark " << isDark << std::endl; });
    chart->signal_drawn().connect([](long result) { std::cout << "drawn " << result << std::endl; });
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [chart, window](guint key, guint, Gdk::ModifierType) {
            OnKey(key, *chart, *window);
            return false;
        },
        false);
    window->add_controller(keys);
    window->set_title("host");
    window->set_decorated(false);
    window->set_child(*chart);
    return window;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 6)
        return 2;
    const auto app = Gtk::Application::create("org.melkar.Host", Gio::Application::Flags::NON_UNIQUE);
    app->signal_activate().connect([&] {
        Gtk::Window* const window = MakeWindow(argv);
        window->signal_hide().connect([window] { delete window; });
        app->add_window(*window);
        window->show();
    });
    return app->run();
}
