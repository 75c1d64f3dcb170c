#include <Zelmar01/controls/zmLookUpEd.h>

#include <Zelmar01/controls/DropDown.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/Field.h>
#include <Zelmar01/data/binding/LongListView.h>

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr int startLength = 20; // characters

} // namespace

/// The drop-down list, with a title above its rows if it has one.
class TLookupList : public TLongListView
{
public:
    TLookupList() : m_header(new QLabel(this))
    {
        m_header->setTextFormat(Qt::PlainText);
        m_header->setFrameStyle(QFrame::Panel | QFrame::Raised);
        m_header->setAutoFillBackground(true);
        setHeader({});
    }

    void setHeader(const QString &title)
    {
        m_header->setText(title);
        m_header->setVisible(!title.isEmpty());
        setViewportMargins(0, HeaderHeight(), 0, 0);
    }
    int HeaderHeight() const { return m_header->text().isEmpty() ? 0 : m_header->sizeHint().height(); }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        TLongListView::resizeEvent(event);
        m_header->setGeometry(frameWidth(), frameWidth(), viewport()->width(), HeaderHeight());
    }

private:
    QLabel *m_header;
};

TzmLookupEdit::TzmLookupEdit(QWidget *parent)
    : TWithOwnFont(parent), m_list(new TKeyListModel(this)), m_listLink(new TListLink(*m_list, this)),
      m_view(new TLookupList), m_dropDown(new TDropDown(this))
{
    UseMessageBoxes();
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    setModel(m_list);
    setView(m_view);
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(NoInsert);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(startLength);
    resetDropDownAutoSize();
    resetDropDownRows();
    resetDropDownSizeable();
    // QComboBox would pick the first row with the text, whatever its key.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    disconnect(lineEdit(), &QLineEdit::returnPressed, this, nullptr);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString &text) {
        text.isEmpty() ? take(-1) : search(text.left(lineEdit()->cursorPosition()));
    });
    connect(m_listLink, &TListLink::OnListChange, this, &TzmLookupEdit::showKey);
    connect(this, &QComboBox::activated, this, [this](int row) {
        take(row);
        finish();
    });
}

void TzmLookupEdit::setListSource(TDataSource *source)
{
    if (auto *before = ListSource())
        disconnect(before, &TDataSource::OnDataChange, this, nullptr);
    if (source)
        connect(source, &TDataSource::OnDataChange, this, &TzmLookupEdit::followCursor);
    m_listLink->setListSource(source);
}

void TzmLookupEdit::setEditValue(const QVariant &key)
{
    const auto before = std::exchange(m_key, key.isValid() ? QVariant(TextOfValue(key)) : key);
    m_before.reset();
    showKey();
    if (m_key != before)
        emit OnEditValueChanged();
}

// The row of the key, or the key itself, keeping what is selected.
void TzmLookupEdit::showKey()
{
    const auto key = m_key.toString();
    const int row = m_key.isValid() ? m_list->RowOfKey(key) : -1;
    const auto shown = row < 0 ? key : m_list->Text(row);
    const bool isSame = row == currentIndex() && shown == currentText();
    if (isSame)
        return;
    const bool allSelected = lineEdit()->selectedText() == currentText();
    setCurrentIndex(row);
    setEditText(shown);
    if (hasFocus() && allSelected)
        lineEdit()->selectAll();
}

// What the user has typed is completed to the first row that begins with it.
void TzmLookupEdit::search(const QString &beginning)
{
    refreshList();
    const auto found = beginning.isEmpty() ? QModelIndexList()
                                           : m_list->match(m_list->index(0), Qt::DisplayRole, beginning, 1,
                                                           Qt::MatchStartsWith);
    if (found.isEmpty())
        showKey();
    else
        take(found.first().row());
    const auto length = static_cast<int>(currentText().size());
    const auto typed = std::clamp(static_cast<int>(beginning.size()) - (found.isEmpty() ? 1 : 0), 0, length);
    lineEdit()->setSelection(length, typed - length);
}

void TzmLookupEdit::take(int row)
{
    if (!m_before)
        m_before = m_key;
    const auto before = std::exchange(m_key, row < 0 ? QVariant() : QVariant(m_list->Key(row)));
    setCurrentIndex(row);
    setEditText(row < 0 ? QString() : m_list->Text(row));
    if (m_key != before)
        emit OnChange();
}

void TzmLookupEdit::finish()
{
    const auto before = std::exchange(m_before, std::nullopt);
    if (!before || *before == m_key)
        return;
    moveCursor(currentIndex());
    emit OnEditValueChanged();
}

void TzmLookupEdit::followCursor()
{
    const auto *rows = ListSource()->DataSet();
    if (m_syncMode && m_view->isVisible() && rows && rows->State() == dsBrowse)
        m_view->setCurrentIndex(m_list->index(rows->RecNo() - 1));
}

void TzmLookupEdit::moveCursor(int row)
{
    auto *rows = ListSource() ? ListSource()->DataSet() : nullptr;
    if (m_syncMode && row >= 0 && rows && rows->State() == dsBrowse && rows->RecordCount() == m_list->Count())
        rows->setRecNo(row + 1);
}

void TzmLookupEdit::refreshList()
{
    ShowingExceptions([this] { m_listLink->Refresh(); });
}

bool TzmLookupEdit::DropDownAutoSize() const
{
    return m_dropDown->AutoSize;
}

void TzmLookupEdit::setDropDownAutoSize(bool autoSize)
{
    m_dropDown->AutoSize = autoSize;
}

bool TzmLookupEdit::DropDownSizeable() const
{
    return m_dropDown->Sizeable;
}

void TzmLookupEdit::setDropDownSizeable(bool sizeable)
{
    m_dropDown->Sizeable = sizeable;
}

void TzmLookupEdit::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    lineEdit()->setReadOnly(readOnly);
}

void TzmLookupEdit::showPopup()
{
    if (m_readOnly)
        return;
    refreshList();
    const auto *rows = ListSource() ? ListSource()->DataSet() : nullptr;
    QString title;
    if (m_showHeader && rows && rows->Active() && rows->Fields().Count() > 1) {
        const auto *field = ListField().isEmpty() ? &rows->Fields()[1] : rows->FindField(ListField());
        title = field ? field->DisplayLabel() : QString();
    }
    m_view->setHeader(title);
    QComboBox::showPopup();
    m_dropDown->Opened();
}

void TzmLookupEdit::keyPressEvent(QKeyEvent *event)
{
    if (!takesKey(*event))
        QComboBox::keyPressEvent(event);
}

bool TzmLookupEdit::takesKey(const QKeyEvent &event)
{
    const auto *line = lineEdit();
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        refreshList();
        return m_readOnly;
    case Qt::Key_Backspace: {
        if (m_readOnly || event.modifiers() != Qt::NoModifier)
            return m_readOnly;
        const auto typed = (line->hasSelectedText() ? line->selectionStart() : line->cursorPosition()) - 1;
        typed > 0 ? search(currentText().left(typed)) : take(-1);
        return true;
    }
    case Qt::Key_Delete:
        if (!m_readOnly)
            take(-1);
        return true;
    case Qt::Key_Escape:
        if (!m_before)
            return false;
        m_key = *std::exchange(m_before, std::nullopt);
        showKey();
        lineEdit()->selectAll();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        finish();
        return false;
    default:
        return false;
    }
}

void TzmLookupEdit::focusInEvent(QFocusEvent *event)
{
    QComboBox::focusInEvent(event);
    m_comesByClick = event->reason() == Qt::MouseFocusReason;
}

// A click into the text selects all of it, as the Tab key does: what is typed then begins a new search.
bool TzmLookupEdit::eventFilter(QObject *watched, QEvent *event)
{
    const bool result = QComboBox::eventFilter(watched, event);
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease &&
        std::exchange(m_comesByClick, false) && !lineEdit()->hasSelectedText()) {
        lineEdit()->selectAll();
        return true;
    }
    return result;
}

void TzmLookupEdit::focusOutEvent(QFocusEvent *event)
{
    const auto *line = lineEdit();
    const auto start = line->selectionStart();
    const auto length = static_cast<int>(line->selectedText().size());
    QComboBox::focusOutEvent(event);
    if (!m_hideSelection && length > 0)
        lineEdit()->setSelection(start, length);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        finish();
}

// A wheel that scrolls the form must not change the key.
void TzmLookupEdit::wheelEvent(QWheelEvent *event)
{
    if (m_readOnly || !hasFocus())
        return event->ignore();
    refreshList();
    QComboBox::wheelEvent(event);
}

} // namespace Zelmar01
