#include "spoken_chart.h"

#include <MelkarCommon/qt6/chart.h>

#include <algorithm>

namespace melkar::qt6 {
namespace {

/// A cell lives until its chart is told of no more.
class SpokenCell final : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    SpokenCell(const SpokenChart& chart, int row, int column) : m_chart(chart), m_row(row), m_column(column) {}

    bool isValid() const override { return true; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_chart.window(); }
    QAccessibleInterface* parent() const override { return const_cast<SpokenChart*>(&m_chart); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}

    /// The first cell of a row stands for the item.
    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name)
            return m_chart.TextOf(m_row, m_column);
        const bool isItem = kind == QAccessible::Description && m_row > 0 && m_column == 0;
        return isItem ? QString::fromStdString(m_chart.View().Tell().names.at(Item())) : QString();
    }

    QAccessible::Role role() const override {
        if (m_row == 0)
            return QAccessible::ColumnHeader;
        return m_column == 0 ? QAccessible::RowHeader : QAccessible::Cell;
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        state.focusable = m_row > 0 && m_column == 0;
        state.focused = m_chart.IsFocused(m_row, m_column);
        return state;
    }

    QRect rect() const override {
        const auto& places = m_chart.View().Places();
        const CRect place = m_row > 0 && Item() < places.size() ? places[Item()] : CRect();
        return {m_chart.Window()->mapToGlobal(QPoint(place.left, place.top)), QSize(place.Width(), place.Height())};
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
    }

    bool isSelected() const override { return false; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {m_chart.cellAt(0, m_column)}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {m_chart.cellAt(m_row, 0)}; }
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return m_row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    std::size_t Item() const { return static_cast<std::size_t>(m_row) - 1; }

    const SpokenChart& m_chart;
    int m_row;
    int m_column;
};

QAccessibleInterface* MakeSpoken(const QString&, QObject* object) {
    auto* const chart = qobject_cast<Chart*>(object);
    return chart ? new SpokenChart(*chart) : nullptr;
}

} // namespace

SpokenChart::SpokenChart(Chart& chart) : QAccessibleWidget(&chart, QAccessible::Table), m_chart(chart) {}

SpokenChart::~SpokenChart() {
    for (const QAccessible::Id cell : m_cells)
        if (cell != 0)
            QAccessible::deleteAccessibleInterface(cell);
}

void SpokenChart::Install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(MakeSpoken);
        return true;
    }();
    Q_UNUSED(isInstalled);
}

void SpokenChart::TellChange(Chart& chart) {
    if (!QAccessible::isActive())
        return;
    for (const auto kind : {QAccessible::NameChanged, QAccessible::DescriptionChanged}) {
        QAccessibleEvent event(&chart, kind);
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleTableModelChangeEvent event(&chart, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

void SpokenChart::TellFocus(Chart& chart) {
    if (!QAccessible::isActive())
        return;
    auto* const spoken = dynamic_cast<SpokenChart*>(QAccessible::queryAccessibleInterface(&chart));
    QAccessibleInterface* const cell = spoken ? spoken->focusChild() : nullptr;
    QAccessibleEvent event(cell ? cell : spoken, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

QString SpokenChart::text(QAccessible::Text kind) const {
    const PageWords& words = View().Tell().words;
    if (kind == QAccessible::Name)
        return QString::fromStdString(words.title);
    if (kind == QAccessible::Description)
        return View().HasPicture() ? QString::fromStdString(words.description)
                                   : QString::fromUtf8(ResultText(View().Result()));
    return QAccessibleWidget::text(kind);
}

int SpokenChart::columnCount() const { return static_cast<int>(View().Tell().table.head.size()); }

int SpokenChart::Rows() const {
    const ContentsTable& table = View().Tell().table;
    return table.rows.empty() ? 0 : static_cast<int>(table.rows.size()) + 1;
}

QString SpokenChart::TextOf(int row, int column) const {
    const ContentsTable& table = View().Tell().table;
    if (row < 0 || column < 0 || row >= Rows() || column >= columnCount())
        return {};
    const auto& cells = row == 0 ? table.head : table.rows[static_cast<std::size_t>(row) - 1];
    return QString::fromStdString(cells[static_cast<std::size_t>(column)]);
}

QAccessibleInterface* SpokenChart::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto at = static_cast<std::size_t>(index);
    if (m_cells.size() <= at)
        m_cells.resize(static_cast<std::size_t>(childCount()));
    if (m_cells[at] == 0)
        m_cells[at] = QAccessible::registerAccessibleInterface(
            new SpokenCell(*this, index / columnCount(), index % columnCount()));
    return QAccessible::accessibleInterface(m_cells[at]);
}

int SpokenChart::indexOfChild(const QAccessibleInterface* child) const {
    for (std::size_t at = 0; at < m_cells.size(); ++at)
        if (m_cells[at] != 0 && QAccessible::accessibleInterface(m_cells[at]) == child)
            return static_cast<int>(at);
    return -1;
}

QAccessibleInterface* SpokenChart::childAt(int x, int y) const {
    const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
    const auto& places = View().Places();
    const auto found = std::find_if(places.begin(), places.end(), [&](const CRect& place) {
        return place.PtInRect({point.x(), point.y()});
    });
    return found == places.end() ? nullptr : cellAt(static_cast<int>(found - places.begin()) + 1, 0);
}

bool SpokenChart::IsFocused(int row, int column) const {
    const auto current = View().Current();
    return current && column == 0 && row == static_cast<int>(*current) + 1 && widget()->hasFocus();
}

QAccessibleInterface* SpokenChart::focusChild() const {
    const auto current = View().Current();
    return current ? cellAt(static_cast<int>(*current) + 1, 0) : nullptr;
}

void* SpokenChart::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

} // namespace melkar::qt6
