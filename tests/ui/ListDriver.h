#pragma once

#include <QHeaderView>
#include <QTest>
#include <QTreeView>

#include <stdexcept>
#include <string>
#include <vector>

/// A window with the list `ListView`, driven as a user does.
class ListDriver {
  protected:
    using Texts = std::vector<std::string>;

    virtual ~ListDriver() = default;

    virtual QWidget& Window() = 0;

    /// What a row is called in the tests.
    virtual std::string NameIn(int row) { return Cell(row, 0); }

    template <typename Control>
    Control& Get(const char* name) {
        auto* control = Window().findChild<Control*>(QLatin1String(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }

    QTreeView& List() { return Get<QTreeView>("ListView"); }

    int RowCount() { return List().model()->rowCount(); }

    std::string Cell(int row, int column) {
        return List().model()->index(row, column).data().toString().toStdString();
    }

    Texts Column(int column) {
        Texts texts;
        for (int row = 0; row < RowCount(); ++row)
            texts.push_back(Cell(row, column));
        return texts;
    }

    Texts SelectedNames() {
        Texts names;
        for (int row = 0; row < RowCount(); ++row)
            if (List().selectionModel()->isRowSelected(row))
                names.push_back(NameIn(row));
        return names;
    }

    void ClickHeader(int section) {
        QHeaderView* header = List().header();
        const QPoint middle(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                            header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
    }

    void ClickRow(const std::string& name, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, keys, MiddleOf(name));
    }

    void DoubleClickRow(const std::string& name) {
        ClickRow(name);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, MiddleOf(name));
    }

    void Select(const Texts& names) {
        for (const std::string& name : names)
            ClickRow(name, &name == &names.front() ? Qt::NoModifier : Qt::ControlModifier);
    }

  private:
    QPoint MiddleOf(const std::string& name) {
        for (int row = 0; row < RowCount(); ++row)
            if (NameIn(row) == name) {
                const QModelIndex index = List().model()->index(row, 0);
                List().scrollTo(index);
                return List().visualRect(index).center();
            }
        throw std::runtime_error("no row " + name);
    }
};
