// Qt Charts, rendered into an image that is kept.

#include "work.h"

#include <QtCharts/QBarCategoryAxis>
#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QChart>
#include <QtCharts/QLegend>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <QApplication>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>

namespace {

class Chart : public Peer {
public:
    Chart() : m_image(MonthData::kWidth, MonthData::kHeight, QImage::Format_RGB32) {
        const QFont plain("Inter", 10);
        m_set = new QBarSet("steps");
        for (int day = 0; day < kDays; ++day)
            m_set->append(0);
        m_set->setColor(QColor(124, 146, 172));
        m_set->setLabelColor(Qt::black);
        m_set->setLabelFont(plain);
        auto* bars = new QBarSeries;
        bars->append(m_set);
        bars->setLabelsVisible(true);
        bars->setLabelsPosition(QAbstractBarSeries::LabelsOutsideEnd);
        auto* target = new QLineSeries;
        target->setName(MonthData::TargetText());
        target->setPen(QPen(QColor(186, 72, 8), 4, Qt::DotLine));
        target->append(-0.5, MonthData::kTarget);
        target->append(kDays - 0.5, MonthData::kTarget);
        m_chart = new QChart;
        m_chart->addSeries(bars);
        m_chart->addSeries(target);
        m_chart->setTitle(MonthData::Title());
        m_chart->setTitleFont(QFont("Inter", 15, QFont::Bold));
        auto* days = new QBarCategoryAxis;
        for (int day = 0; day < kDays; ++day)
            days->append(QString::fromStdString(MonthData::Date(day)));
        days->setLabelsFont(plain);
        days->setLabelsAngle(-90); // all of them are written: there is no way to thin them out
        auto* scale = new QValueAxis;
        scale->setRange(0, MonthData::kTop);
        scale->setTickCount(MonthData::kTop / MonthData::kStep + 1);
        scale->setLabelFormat("%.0f");
        scale->setLabelsFont(plain);
        scale->setTitleText("steps");
        m_chart->addAxis(days, Qt::AlignBottom);
        m_chart->addAxis(scale, Qt::AlignLeft);
        for (QAbstractSeries* series : {static_cast<QAbstractSeries*>(bars), static_cast<QAbstractSeries*>(target)}) {
            series->attachAxis(days);
            series->attachAxis(scale);
        }
        m_chart->resize(MonthData::kWidth, MonthData::kHeight);
        m_scene.addItem(m_chart);
    }

    void Draw(const MonthData& month) override {
        for (int day = 0; day < kDays; ++day)
            m_set->replace(day, month.steps[static_cast<std::size_t>(day)]);
        QCoreApplication::processEvents(); // its layout is made by events
        m_image.fill(Qt::white);
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF all(0, 0, MonthData::kWidth, MonthData::kHeight);
        m_scene.render(&painter, all, all);
    }

    void Write(const char* path) override { m_image.save(path); }

private:
    QImage m_image;
    QGraphicsScene m_scene;
    QChart* m_chart = nullptr;
    QBarSet* m_set = nullptr;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Chart chart;
    return RunPeer(argc, argv, chart);
}
