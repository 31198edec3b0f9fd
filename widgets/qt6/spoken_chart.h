#pragma once

#include "chart_view.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <vector>

namespace melkar::qt6 {

class Chart;

/// The picture of a widget as programs that read aloud have it: a table, whose
/// first row are heads.
class SpokenChart final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit SpokenChart(Chart& chart);
    ~SpokenChart() override;

    /// Has Qt make one for each chart; whenever it is called.
    static void Install();
    /// Tells who listens that the picture is another one, or that somebody walked
    /// to an item.
    static void TellChange(Chart& chart);
    static void TellFocus(Chart& chart);

    QString text(QAccessible::Text kind) const override;
    int childCount() const override { return Rows() * columnCount(); }
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override { return child(row * columnCount() + column); }
    QString columnDescription(int column) const override { return TextOf(0, column); }
    QString rowDescription(int row) const override { return TextOf(row, 0); }
    int columnCount() const override;
    int rowCount() const override { return Rows(); }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

    // Nothing can be selected.
    int selectedCellCount() const override { return 0; }
    QList<QAccessibleInterface*> selectedCells() const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }

    // For its cells.
    const widgets::ChartView& View() const;
    QWidget* Window() const { return widget(); }
    QString TextOf(int row, int column) const;
    bool IsFocused(int row, int column) const;

private:
    int Rows() const; ///< that of the heads included

    Chart& m_chart;
    mutable std::vector<QAccessible::Id> m_cells; ///< made when somebody asks; 0: not yet
};

} // namespace melkar::qt6
