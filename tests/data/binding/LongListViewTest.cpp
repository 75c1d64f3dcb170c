#include "Form.h"

#include <Zelmar01/data/binding/KeyListModel.h>
#include <Zelmar01/data/binding/LongListView.h>

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QStyledItemDelegate>

#include <numeric>

using namespace Zelmar01;

namespace {

constexpr int rowCount = 1'000'000;

/// Remembers the rows that were painted.
class Recorder : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        Painted.push_back(index.row());
        QStyledItemDelegate::paint(painter, option, index);
    }
    mutable std::vector<int> Painted;
};

class LongListView : public testing::Test
{
protected:
    LongListView()
    {
        TColumn keys(ftInteger), texts(ftString);
        for (int row = 0; row < rowCount; ++row) {
            keys.Add<qint64>(row);
            texts.Add(QString::number(row));
        }
        m_list.Fill(std::move(keys), std::move(texts));
        m_view.setModel(&m_list);
        m_view.setItemDelegate(&m_recorder);
        m_form.resize(200, 300);
        m_form.Show();
        m_view.setFocus();
    }

    int current() const { return m_view.currentIndex().row(); }
    int rowAt(int y) const { return m_view.indexAt({5, y}).row(); }
    int height() const { return m_view.viewport()->height(); }
    int rowHeight() const { return m_view.visualRect(m_list.index(0)).height(); }

    TKeyListModel m_list;
    Recorder m_recorder;
    Form m_form;
    TLongListView &m_view = m_form.Add<TLongListView>();
};

} // namespace

TEST_F(LongListView, paintsTheRowsInSightAndNoOthers)
{
    for (const int row : {0, 500'000, rowCount - 1}) {
        m_view.scrollTo(m_list.index(row));
        m_recorder.Painted.clear();
        m_view.viewport()->repaint();
        const auto &painted = m_recorder.Painted;
        ASSERT_FALSE(painted.empty());
        EXPECT_EQ(painted.front(), rowAt(0));
        EXPECT_TRUE(std::find(painted.begin(), painted.end(), row) != painted.end()) << row;
        EXPECT_LE(static_cast<int>(painted.size()), height() / rowHeight() + 2);
    }
    EXPECT_EQ(rowAt(height() - 1), rowCount - 1) << "the last row ends the list";
}

TEST_F(LongListView, goesThroughItsRowsByKeyboard)
{
    struct TCase
    {
        Qt::Key Key;
        int From, To;
    };
    const int page = height() / rowHeight();
    for (const auto &c : {TCase{Qt::Key_Down, 3, 4},
                          {Qt::Key_Up, 3, 2},
                          {Qt::Key_Up, 0, 0},
                          {Qt::Key_End, 0, rowCount - 1},
                          {Qt::Key_Down, rowCount - 1, rowCount - 1},
                          {Qt::Key_Home, 99, 0},
                          {Qt::Key_PageDown, 100, 100 + page},
                          {Qt::Key_PageUp, 100, 100 - page},
                          {Qt::Key_PageUp, 1, 0}}) {
        m_view.setCurrentIndex(m_list.index(c.From));
        QTest::keyClick(&m_view, c.Key);
        EXPECT_EQ(current(), c.To) << c.Key;
        EXPECT_TRUE(m_view.viewport()->rect().contains(m_view.visualRect(m_view.currentIndex()))) << c.Key;
    }
    TypeKeys(m_view, QStringLiteral("9999"));
    EXPECT_EQ(current(), 9999) << "type-ahead";
}

TEST_F(LongListView, takesClicksAndSelectsRanges)
{
    m_view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view.scrollTo(m_list.index(1000), QAbstractItemView::PositionAtTop);
    const auto click = [&](int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(m_view.viewport(), Qt::LeftButton, modifiers,
                          m_view.visualRect(m_list.index(row)).center());
    };
    click(1002);
    EXPECT_EQ(current(), 1002);
    click(1005, Qt::ShiftModifier);
    EXPECT_EQ(m_view.selectionModel()->selectedIndexes().size(), 4);
    EXPECT_TRUE(m_view.selectionModel()->isRowSelected(1003));
    EXPECT_FALSE(m_view.indexAt({5, -1 - 1000 * rowHeight()}).isValid());
    m_list.Clear();
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton);
    EXPECT_EQ(current(), -1);
}

TEST_F(LongListView, keepsItsPlaceWhenRowsComeAndGo)
{
    m_view.setCurrentIndex(m_list.index(10));
    m_list.removeRows(0, 5);
    EXPECT_EQ(current(), 5);
    m_list.insertRows(0, 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(current(), 7);
    m_list.removeRows(3, m_list.Count() - 3);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_view.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(rowAt(3 * rowHeight()), -1);
    auto font = m_view.font();
    font.setPointSize(30);
    m_view.setFont(font);
    QCoreApplication::processEvents();
    EXPECT_GT(m_view.visualRect(m_list.index(1)).top(), 30);
}
