// QCustomPlot, drawn into an image that is kept; what it shows is made once and given other figures.

#include "work.h"

#include <qcustomplot.h>

#include <QApplication>

namespace {

QColor Rgb(int red, int green, int blue) { return {red, green, blue}; }

class Plot : public Peer {
public:
    void Draw(const MonthData& month) override {
        if (!m_bars)
            MakeMonth();
        QVector<double> days(kDays);
        QVector<double> below(kDays);
        QVector<double> reached(kDays);
        for (int day = 0; day < kDays; ++day) {
            const int steps = month.steps[static_cast<std::size_t>(day)];
            days[day] = day;
            (steps >= MonthData::kTarget ? reached : below)[day] = steps;
            m_figures[static_cast<std::size_t>(day)]->setText(QString::number(steps));
            m_figures[static_cast<std::size_t>(day)]->position->setCoords(day, steps);
        }
        m_bars->setData(days, below, true);
        m_reached->setData(days, reached, true);
        Render(MonthData::kWidth, MonthData::kHeight);
    }

    bool HasDay() const override { return true; }
    void Draw(const DayData& day) override {
        if (!m_profile)
            MakeDay();
        QVector<double> hours(DayData::kValues);
        QVector<double> levels(DayData::kValues);
        for (int i = 0; i < DayData::kValues; ++i) {
            hours[i] = i * 24.0 / DayData::kValues;
            levels[i] = day.intensity[static_cast<std::size_t>(i)];
        }
        m_profile->setData(hours, levels, true);
        m_summary->setText(QString::fromStdString(day.Summary()));
        QVector<double> at(DayData::kLevels);
        QVector<double> minutes(DayData::kLevels);
        for (int level = 0; level < DayData::kLevels; ++level) {
            at[level] = level + 1;
            minutes[level] = day.minutes[static_cast<std::size_t>(level)];
            m_levelFigures[static_cast<std::size_t>(level)]->setText(QString::number(minutes[level], 'f', 1));
            m_levelFigures[static_cast<std::size_t>(level)]->position->setCoords(std::min(minutes[level], 40.0),
                                                                                 level + 1);
        }
        m_levels->setData(at, minutes, true);
        Render(DayData::kWidth, DayData::kHeight);
    }

    void Write(const char* path) override { m_image.save(path); }

private:
    void Render(int width, int height) {
        if (m_image.isNull())
            m_image = QImage(width, height, QImage::Format_RGB32);
        QCPPainter painter(&m_image);
        m_plot.toPainter(&painter, width, height);
    }

    QCPItemText* Text(const QFont& font, Qt::Alignment where) {
        auto* text = new QCPItemText(&m_plot);
        text->setFont(font);
        text->setPositionAlignment(where);
        return text;
    }

    void MakeMonth() {
        const QFont plain("Inter", 10);
        m_plot.plotLayout()->insertRow(0);
        m_plot.plotLayout()->addElement(
            0, 0, new QCPTextElement(&m_plot, MonthData::Title(), QFont("Inter", 15, QFont::Bold)));
        m_plot.yAxis->setRange(0, MonthData::kTop);
        m_plot.yAxis->setLabel("steps");
        auto scale = QSharedPointer<QCPAxisTickerFixed>(new QCPAxisTickerFixed);
        scale->setTickStep(MonthData::kStep);
        m_plot.yAxis->setTicker(scale);
        m_plot.xAxis->setRange(-0.5, kDays - 0.5);
        m_plot.xAxis->grid()->setVisible(false);
        auto dates = QSharedPointer<QCPAxisTickerText>(new QCPAxisTickerText);
        for (int day = 0; day < kDays; day += MonthData::kDateStep)
            dates->addTick(day, QString::fromStdString(MonthData::Date(day)));
        m_plot.xAxis->setTicker(dates);
        for (QCPAxis* axis : {m_plot.xAxis, m_plot.yAxis})
            axis->setTickLabelFont(plain), axis->setLabelFont(plain);
        const auto bars = [&](const QColor& color) {
            auto* made = new QCPBars(m_plot.xAxis, m_plot.yAxis);
            made->setWidth(0.5);
            made->setPen(Qt::NoPen);
            made->setBrush(color);
            made->removeFromLegend();
            return made;
        };
        m_bars = bars(Rgb(124, 146, 172));
        m_reached = bars(Rgb(14, 92, 72));
        QCPGraph* target = m_plot.addGraph();
        target->setName(MonthData::TargetText());
        target->setPen(QPen(Rgb(186, 72, 8), 4, Qt::DotLine));
        target->setData({-0.5, kDays - 0.5}, {double(MonthData::kTarget), double(MonthData::kTarget)});
        m_plot.legend->setVisible(true);
        m_plot.legend->setFont(plain);
        for (int day = 0; day < kDays; ++day)
            m_figures.push_back(Text(plain, Qt::AlignHCenter | Qt::AlignBottom));
    }

    void MakeDay() {
        const QFont plain("Inter", 8);
        m_plot.yAxis->setRange(0, 10);
        m_plot.xAxis->setRange(0, 24);
        auto hours = QSharedPointer<QCPAxisTickerFixed>(new QCPAxisTickerFixed);
        hours->setTickStep(1);
        m_plot.xAxis->setTicker(hours);
        m_plot.xAxis->grid()->setVisible(false);
        m_profile = m_plot.addGraph();
        m_profile->setPen(QPen(Rgb(198, 206, 216), 1));
        m_profile->setBrush(Rgb(96, 140, 190));
        m_profile->setAdaptiveSampling(false);
        m_summary = Text(QFont("Inter", 12), Qt::AlignLeft | Qt::AlignTop);
        m_summary->position->setCoords(0.3, 9.8);
        auto* right = new QCPAxisRect(&m_plot);
        right->setMaximumSize(120, QWIDGETSIZE_MAX);
        m_plot.plotLayout()->addElement(0, 1, right);
        right->axis(QCPAxis::atLeft)->setRange(0, 10);
        right->axis(QCPAxis::atBottom)->setRange(0, 40);
        m_levels = new QCPBars(right->axis(QCPAxis::atLeft), right->axis(QCPAxis::atBottom));
        m_levels->setBrush(Rgb(112, 150, 200));
        for (int level = 0; level < DayData::kLevels; ++level) {
            QCPItemText* figure = Text(plain, Qt::AlignLeft | Qt::AlignVCenter);
            figure->setClipAxisRect(right);
            figure->position->setAxes(right->axis(QCPAxis::atBottom), right->axis(QCPAxis::atLeft));
            m_levelFigures.push_back(figure);
        }
        for (QCPAxis* axis : {m_plot.xAxis, m_plot.yAxis, right->axis(QCPAxis::atLeft), right->axis(QCPAxis::atBottom)})
            axis->setTickLabelFont(plain);
    }

    QCustomPlot m_plot;
    QImage m_image;
    QCPBars* m_bars = nullptr;
    QCPBars* m_reached = nullptr;
    std::vector<QCPItemText*> m_figures;
    QCPGraph* m_profile = nullptr;
    QCPItemText* m_summary = nullptr;
    QCPBars* m_levels = nullptr;
    std::vector<QCPItemText*> m_levelFigures;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Plot plot;
    return RunPeer(argc, argv, plot);
}
