// A week of steps in a window of Qt 6: qt6_window APP_BIN DATA, such as samples/app/bin samples/data/bar-week.csv.
#include <MelkarCommon/qt6/chart.h>

#include <QApplication>
#include <iostream>

int main(int argc, char** argv) {
    const QApplication app(argc, argv);
    if (argc != 3)
        return 2;
    melkar::qt6::Chart chart(melkar::MakeGraph<CBarGraph>, {"BAR_WEEK", argv[1]}, argv[2]);
    QObject::connect(&chart, &melkar::qt6::Chart::dayClicked,
                     [](long day) { std::cout << "day " << day << std::endl; });
    chart.setWindowTitle("Steps");
    chart.show();
    return QApplication::exec();
}
