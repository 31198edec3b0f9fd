#include <MelkarCommon/qt6/chart.h>

#include "chart_view.h"
#include "spoken_chart.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHelpEvent>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <QToolTip>

#include <algorithm>
#include <optional>
#include <utility>

namespace melkar::qt6 {
namespace {

using widgets::ChartView;
using widgets::Stride;

constexpr QSize kLeast(80, 40);
constexpr QSize kNatural(720, 400);

/// On the pixels of the picture, without a copy.
QImage ImageOn(const PixelView& view) {
    return {reinterpret_cast<const uchar*>(view.pixels), view.width, view.height,
            static_cast<qsizetype>(view.stride) * static_cast<qsizetype>(sizeof(std::uint32_t)), QImage::Format_RGB32};
}

CPoint PointOf(const QPoint& point) { return {point.x(), point.y()}; }
QString TextOf(const std::string& text) { return QString::fromStdString(text); }

/// Blue within white, to be seen on any ground.
void DrawRing(QPainter& painter, const QRect& box) {
    painter.setBrush(Qt::NoBrush);
    const auto frame = [&](int inset, int width, const QColor& color) {
        for (int at = inset; at < inset + width; ++at) {
            painter.setPen(QPen(color, 1));
            painter.drawRect(box.adjusted(at, at, -at - 1, -at - 1));
        }
    };
    frame(0, 1, Qt::white);
    frame(1, 2, QColor(0x1c, 0x71, 0xd8));
    frame(3, 1, Qt::white);
}

std::optional<Stride> StrideOf(int key) {
    switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        return Stride::Next;
    case Qt::Key_Left:
    case Qt::Key_Up:
        return Stride::Previous;
    case Qt::Key_Home:
        return Stride::First;
    case Qt::Key_End:
        return Stride::Last;
    case Qt::Key_PageDown:
        return Stride::WeekOn;
    case Qt::Key_PageUp:
        return Stride::WeekBack;
    default:
        return std::nullopt;
    }
}

bool IsClick(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space; }

} // namespace

/// All that a host doesn't see.
class Chart::Works {
public:
    Works(Chart& chart, PictureMaker make, ChartLooks looks, std::string data)
        : view(std::move(make), std::move(looks), std::move(data)), m_chart(chart) {}

    void Refresh() {
        QTimer::singleShot(0, &m_chart, [this] { Update(); });
    } ///< soon, once for all changes until then
    void Update();
    void SetSize();
    void JudgeDesktop();
    void Paint(QPainter& painter);
    void Walk(Stride stride);
    void EndWalk();
    void Click(long day);
    void OpenMenu(const QPoint& global);
    void AskForFile(const char* suffix);
    void Complain(const QString& reason);

    ChartView view;
    ChartMenuWords words;
    bool isDark = false;
    bool isRinged = false; ///< the focus came by keyboard

private:
    Chart& m_chart;
};

void Chart::Works::SetSize() {
    view.SetSize(m_chart.width(), m_chart.height(), m_chart.devicePixelRatioF());
    Update();
}

void Chart::Works::Update() {
    if (!view.Update())
        return;
    m_chart.update();
    SpokenChart::TellChange(m_chart);
    emit m_chart.drawn(view.Result());
}

void Chart::Works::JudgeDesktop() {
    const bool isLight = m_chart.palette().color(QPalette::WindowText).lightnessF() > 0.5;
    if (std::exchange(isDark, isLight) == isLight)
        return;
    view.SetDark(isDark);
    Refresh();
    emit m_chart.darkChanged(isDark);
}

void Chart::Works::Paint(QPainter& painter) {
    const widgets::ShownPixels pixels = view.Pixels();
    if (pixels.view.pixels) {
        painter.drawImage(m_chart.rect(), ImageOn(pixels.view));
    } else {
        painter.fillRect(m_chart.rect(), m_chart.palette().window());
        if (view.Result() != kOk)
            painter.drawText(m_chart.rect(), Qt::AlignCenter | Qt::TextWordWrap,
                             TextOf(words.noPicture + ": " + ResultText(view.Result())));
    }
    if (const CRect ring = view.Ring(); ring.right > ring.left)
        DrawRing(painter, {ring.left, ring.top, ring.Width(), ring.Height()});
    else if (isRinged && m_chart.hasFocus())
        DrawRing(painter, m_chart.rect());
}

void Chart::Works::Walk(Stride stride) {
    if (!view.Walk(stride))
        return;
    m_chart.update();
    SpokenChart::TellFocus(m_chart);
}

void Chart::Works::EndWalk() {
    view.StopWalking();
    m_chart.update();
    SpokenChart::TellFocus(m_chart);
}

void Chart::Works::Click(long day) {
    if (day >= 0)
        emit m_chart.dayClicked(day);
}

void Chart::Works::OpenMenu(const QPoint& global) {
    if (!view.HasPicture())
        return;
    QMenu menu(&m_chart);
    menu.addAction(TextOf(words.copy), &m_chart, [this] { m_chart.Copy(); });
    menu.addAction(TextOf(words.savePng), &m_chart, [this] { AskForFile("png"); });
    menu.addAction(TextOf(words.saveSvg), &m_chart, [this] { AskForFile("svg"); });
    menu.addAction(TextOf(words.savePdf), &m_chart, [this] { AskForFile("pdf"); });
    menu.addAction(TextOf(words.print), &m_chart, [this] { m_chart.Print(); });
    menu.exec(global);
}

void Chart::Works::AskForFile(const char* suffix) {
    const QString path = QFileDialog::getSaveFileName(&m_chart, {}, QString("chart.") + suffix, QString("*.") + suffix);
    if (path.isEmpty())
        return;
    if (const std::string reason = m_chart.Save(path.toStdString()); !reason.empty())
        Complain(TextOf(reason));
}

void Chart::Works::Complain(const QString& reason) {
    QMessageBox::warning(&m_chart, TextOf(words.notSaved), TextOf(words.notSaved) + "\n" + reason);
}

Chart::Chart(GraphMaker make, ChartLooks looks, std::string data, QWidget* parent)
    : Chart(PicturesOf(std::move(make)), std::move(looks), std::move(data), parent) {}

Chart::Chart(PictureMaker make, ChartLooks looks, std::string data, QWidget* parent)
    : QWidget(parent), m_works(std::make_unique<Works>(*this, std::move(make), std::move(looks), std::move(data))) {
    SpokenChart::Install();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_works->JudgeDesktop();
}

Chart::~Chart() = default;

void Chart::SetLooks(ChartLooks looks) {
    m_works->view.SetLooks(std::move(looks));
    m_works->Refresh();
}

void Chart::SetDarkLooks(ChartLooks looks) {
    m_works->view.SetDarkLooks(std::move(looks));
    m_works->Refresh();
}

void Chart::SetData(std::string path) {
    m_works->view.SetData(std::move(path));
    m_works->Refresh();
}

void Chart::Reload() {
    m_works->view.Remake();
    m_works->Refresh();
}

void Chart::Redraw() {
    m_works->view.Redraw();
    m_works->Refresh();
}

void Chart::SetMenuWords(const ChartMenuWords& words) { m_works->words = words; }
QSize Chart::sizeHint() const { return kNatural; }
QSize Chart::minimumSizeHint() const { return kLeast; }
long Chart::Result() const { return m_works->view.Result(); }
bool Chart::IsDark() const { return m_works->isDark; }
const std::vector<Contents>& Chart::Shown() const { return m_works->view.Shown(); }
ChartPicture* Chart::Picture() const { return m_works->view.Picture(); }

void Chart::Copy() {
    if (!m_works->view.HasPicture())
        return;
    m_works->view.EndHover();
    QApplication::clipboard()->setImage(ImageOn(m_works->view.Pixels().view).copy());
    update();
}

std::string Chart::Save(const std::string& path) {
    std::string reason = m_works->view.Save(path);
    update();
    return reason;
}

/// Qt's painter takes no vectors of others: the page gets as many pixels as a
/// surface can have, up to those of the printer.
void Chart::PrintOn(QPrinter& printer) {
    QPainter painter(&printer);
    const QRect page(QPoint(), printer.pageLayout().paintRectPixels(printer.resolution()).size());
    const double scale = std::min(page.width() / double(width()), page.height() / double(height()));
    const widgets::ShownPixels sheet = m_works->view.DrawScaled(scale);
    if (sheet.view.pixels)
        painter.drawImage(QRectF(0, 0, width() * scale, height() * scale), ImageOn(sheet.view));
    update();
}

void Chart::Print() {
    QPrinter printer(QPrinter::HighResolution);
    if (width() > height())
        printer.setPageOrientation(QPageLayout::Landscape);
    if (QPrintDialog(&printer, this).exec() == QDialog::Accepted)
        PrintOn(printer);
}

bool Chart::event(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
        m_works->JudgeDesktop();
    else if (event->type() == QEvent::ToolTip) {
        auto* const help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), TextOf(m_works->view.TipAt(PointOf(help->pos()))), this);
        return true;
    }
    return QWidget::event(event);
}

void Chart::paintEvent(QPaintEvent*) {
    if (m_works->view.SetSize(width(), height(),
                              devicePixelRatioF())) // of another screen
        m_works->Refresh();
    QPainter painter(this);
    m_works->Paint(painter);
}

void Chart::resizeEvent(QResizeEvent*) { m_works->SetSize(); }

void Chart::mouseMoveEvent(QMouseEvent* event) {
    if (m_works->view.HoverAt(PointOf(event->pos())))
        update();
}

void Chart::mousePressEvent(QMouseEvent* event) { event->accept(); }

void Chart::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        m_works->Click(m_works->view.DayAt(PointOf(event->pos())));
}

void Chart::leaveEvent(QEvent*) {
    if (m_works->view.EndHover())
        update();
}

void Chart::keyPressEvent(QKeyEvent* event) {
    const bool isShortcut = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const auto stride = StrideOf(event->key());
    const auto current = m_works->view.Current();
    if (!isShortcut && stride)
        m_works->Walk(*stride);
    else if (!isShortcut && current && IsClick(event->key()))
        m_works->Click(static_cast<long>(*current));
    else if (!isShortcut && current && event->key() == Qt::Key_Escape)
        m_works->EndWalk();
    else
        QWidget::keyPressEvent(event);
}

void Chart::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        m_works->isRinged = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    QWidget::focusInEvent(event);
}

void Chart::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason)
        m_works->view.StopWalking();
    QWidget::focusOutEvent(event);
}

/// The menu key means the item of the ring.
void Chart::contextMenuEvent(QContextMenuEvent* event) {
    const CRect ring = m_works->view.Ring();
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    m_works->OpenMenu(isKey && ring.right > ring.left ? mapToGlobal(QPoint(ring.left, ring.bottom))
                                                      : event->globalPos());
}

const widgets::ChartView& SpokenChart::View() const { return m_chart.m_works->view; }

} // namespace melkar::qt6
