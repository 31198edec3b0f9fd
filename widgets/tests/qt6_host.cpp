// A window for scripts/check-widgets, as gtk4_host is: qt6_host WIDTHxHEIGHT KIND BASE SECTION DATA [DARK_BASE].
#include <MelkarCommon/qt6/chart.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPalette>
#include <QPrinter>
#include <QShortcut>
#include <cstdio>
#include <iostream>

namespace {

void Save(melkar::qt6::Chart& chart) {
    for (const char* name : {"host.png", "host.svg", "host.pdf", "nowhere/host.png"})
        std::cout << "saved " << name << ": " << chart.Save(name) << std::endl;
}

void PrintToFile(melkar::qt6::Chart& chart) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName("printed.pdf");
    chart.PrintOn(printer);
    std::cout << "printed" << std::endl;
}

void TurnDesktop() {
    static bool isDark = false;
    isDark = !isDark;
    QApplication::setPalette(isDark ? QPalette(QColor(40, 40, 40)) : QPalette(QColor(240, 240, 240)));
}

} // namespace

int main(int argc, char** argv) {
    const QApplication app(argc, argv);
    if (argc < 6)
        return 2;
    int width = 0;
    int height = 0;
    std::sscanf(argv[1], "%dx%d", &width, &height);
    melkar::qt6::Chart chart(melkar::FindKind(argv[2])->make, {argv[4], argv[3]}, argv[5]);
    if (argv[6])
        chart.SetDarkLooks({argv[4], argv[6]});
    using melkar::qt6::Chart;
    QObject::connect(&chart, &Chart::dayClicked, [](long day) { std::cout << "day " << day << std::endl; });
    QObject::connect(&chart, &Chart::darkChanged, [](bool isDark) { std::cout << "dark " << isDark << std::endl; });
    QObject::connect(&chart, &Chart::drawn, [](long result) { std::cout << "drawn " << result << std::endl; });
    const auto on = [&chart](Qt::Key key, auto act) {
        QObject::connect(new QShortcut(QKeySequence(key), &chart), &QShortcut::activated, act);
    };
    on(Qt::Key_D, TurnDesktop);
    on(Qt::Key_S, [&chart] { Save(chart); });
    on(Qt::Key_P, [&chart] { PrintToFile(chart); });
    on(Qt::Key_R, [&chart] { chart.Reload(); });
    on(Qt::Key_Q, [&chart] { chart.close(); });
    chart.setWindowFlag(Qt::FramelessWindowHint);
    chart.setWindowTitle("host");
    chart.resize(width, height);
    chart.show();
    return QApplication::exec();
}
