#include <Zelmar01/keylists/ComboBoxFk.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/LeaveWatch.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/binding/LongListView.h>

#include <QChildEvent>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSignalBlocker>

namespace Zelmar01 {

namespace {

constexpr int startLength = 20; // characters

} // namespace

TComboBoxFk::TComboBoxFk(QWidget *parent) : QComboBox(parent), m_list(new TKeyListModel(this))
{
    UseMessageBoxes();
    setModel(m_list);
    setView(new TLongListView);
    setInsertPolicy(NoInsert);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(startLength);
    // QComboBox would make the first of the new entries current, for a moment or for good.
    connect(m_list, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        setCurrentIndex(-1);
        blockSignals(true);
    });
    connect(m_list, &QAbstractItemModel::modelReset, this, [this] {
        setCurrentIndex(-1);
        blockSignals(false);
    });
    setEditable(true);
    watchEditor();
    connect(new TLeaveWatch(this), &TLeaveWatch::OnLeave, this,
            [this] { ShowingExceptions([this] { DoExit(); }); });
}

void TComboBoxFk::RemplirListe(TDataSet &dataSet, bool reopen)
{
    m_list->Clear();
    if (reopen) {
        dataSet.Close();
        dataSet.Open();
    }
    const auto close = qScopeGuard([&] {
        if (reopen)
            dataSet.Close();
    });
    dataSet.First();
    const auto &fields = dataSet.Fields();
    m_list->Fill(dataSet.ColumnOf(fields[0]), dataSet.ColumnOf(fields[1]));
    dataSet.Last();
}

void TComboBoxFk::RemplirListe(const QStringList &cles, const QStringList &libelles)
{
    m_list->Fill(cles, libelles);
}

void TComboBoxFk::SelectionnerCle(const QString &cle)
{
    setCurrentIndex(m_list->RowOfKey(cle));
}

QString TComboBoxFk::DonnerCle() const
{
    return currentIndex() < 0 ? QString() : m_list->Key(currentIndex());
}

void TComboBoxFk::DoExit()
{
    takeTyped();
}

// Makes the entry with the typed text current, as if the user had picked it.
bool TComboBoxFk::takeTyped()
{
    if (!isEditable() || currentIndex() >= 0 || currentText().isEmpty())
        return false;
    const int row = m_list->RowOfText(currentText());
    if (row < 0)
        return false;
    setCurrentIndex(row);
    emit activated(row);
    emit textActivated(itemText(row));
    return true;
}

// A host may make the box editable again later on, which gives it another line edit.
void TComboBoxFk::childEvent(QChildEvent *event)
{
    QComboBox::childEvent(event);
    if (event->polished() && lineEdit())
        watchEditor();
}

void TComboBoxFk::watchEditor()
{
    if (m_watched == lineEdit())
        return;
    m_watched = lineEdit();
    setCompleter(nullptr);
    // QComboBox would pick an entry with exactly that text, also when another window takes the focus.
    disconnect(m_watched, &QLineEdit::editingFinished, this, nullptr);
    disconnect(m_watched, &QLineEdit::returnPressed, this, nullptr);
    connect(m_watched, &QLineEdit::textEdited, this, [this](const QString &text) {
        dropEntry(text);
        ShowingExceptions([this] { Typed(); });
    });
    connect(m_watched, &QLineEdit::returnPressed, this, [this] { takeTyped(); });
}

// QComboBox clears the text together with the entry: it is put back as if it had been typed, to be undone.
void TComboBoxFk::dropEntry(const QString &typed)
{
    if (currentIndex() < 0)
        return;
    const auto before = currentIndex() < count() ? itemText(currentIndex()) : QString();
    const int cursor = m_watched->cursorPosition();
    {
        const QSignalBlocker quiet(m_watched);
        setCurrentIndex(-1);
        m_watched->setText(before);
        m_watched->selectAll();
        m_watched->insert(typed);
        m_watched->setCursorPosition(cursor);
    }
    m_watched->update();
}

} // namespace Zelmar01
