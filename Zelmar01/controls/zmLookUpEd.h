#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/OwnFont.h>
#include <Zelmar01/data/binding/KeyListModel.h>
#include <Zelmar01/data/binding/ListLink.h>

#include <QComboBox>

#include <optional>

namespace Zelmar01 {

class TDropDown;
class TLookupList;

/// An editor of a key that is looked up in the rows of a dataset: it shows the text of the row with that key.
///
/// The user picks a row from the list, or types the beginning of its text, which is completed at once; a
/// letter that no text goes on with is refused, so that the editor never shows anything but a row. Emptying
/// the text means null. A key without a row is shown as it is and stays until the user picks another one.
///
/// With ListOptions_SyncMode the open list follows the cursor of its dataset, and picking a row moves the
/// cursor to it, unless a record of that dataset is being edited.
class TzmLookupEdit : public TWithOwnFont<QComboBox>
{
    Q_OBJECT
    Q_PROPERTY(
        bool DropDownAutoSize READ DropDownAutoSize WRITE setDropDownAutoSize RESET resetDropDownAutoSize)
    Q_PROPERTY(int DropDownRows READ maxVisibleItems WRITE setDropDownRows RESET resetDropDownRows)
    Q_PROPERTY(
        int maxVisibleItems READ maxVisibleItems WRITE setMaxVisibleItems DESIGNABLE false STORED false)
    Q_PROPERTY(
        bool DropDownSizeable READ DropDownSizeable WRITE setDropDownSizeable RESET resetDropDownSizeable)
    Q_PROPERTY(bool ListOptions_ShowHeader READ ListOptions_ShowHeader WRITE setListOptions_ShowHeader RESET
                   resetListOptions_ShowHeader)
    Q_PROPERTY(bool ListOptions_SyncMode READ ListOptions_SyncMode WRITE setListOptions_SyncMode RESET
                   resetListOptions_SyncMode)
    Q_PROPERTY(bool HideSelection READ HideSelection WRITE setHideSelection RESET resetHideSelection)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly RESET resetReadOnly)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont RESET resetParentFont)
    Q_PROPERTY(QString KeyField READ KeyField WRITE setKeyField)
    Q_PROPERTY(QString ListField READ ListField WRITE setListField)
    Q_PROPERTY(QVariant EditValue READ EditValue WRITE setEditValue NOTIFY OnEditValueChanged
                   USER true DESIGNABLE false STORED false)
public:
    explicit TzmLookupEdit(QWidget *parent = nullptr);

    /// The key, as text; invalid for null.
    QVariant EditValue() const { return m_key; }
    void setEditValue(const QVariant &key);

    /// The data source of the rows, and its fields for key and text; the first and the second one while they
    /// are empty. The host owns the data source.
    TDataSource *ListSource() const { return m_listLink->ListSource(); }
    void setListSource(TDataSource *source);
    QString KeyField() const { return m_listLink->KeyField(); }
    void setKeyField(const QString &name) { m_listLink->setKeyField(name); }
    QString ListField() const { return m_listLink->ListField(); }
    void setListField(const QString &name) { m_listLink->setListField(name); }

    /// Whether the list is made as wide as its texts; else it is as wide as the editor.
    bool DropDownAutoSize() const;
    void setDropDownAutoSize(bool autoSize);
    /// The most rows that the list shows at a time.
    void setDropDownRows(int rows) { setMaxVisibleItems(rows); }
    /// Whether the user can give the list another size.
    bool DropDownSizeable() const;
    void setDropDownSizeable(bool sizeable);
    /// Whether the list has a title, that of its field.
    bool ListOptions_ShowHeader() const { return m_showHeader; }
    void setListOptions_ShowHeader(bool show) { m_showHeader = show; }
    bool ListOptions_SyncMode() const { return m_syncMode; }
    void setListOptions_SyncMode(bool sync) { m_syncMode = sync; }
    /// Whether the selected part of the text is shown only while the editor has the focus.
    bool HideSelection() const { return m_hideSelection; }
    void setHideSelection(bool hide) { m_hideSelection = hide; }
    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);

    void showPopup() override;

signals:
    /// The user has chosen another row, or none.
    void OnChange();
    /// There is a new key: the user has finished, or a host has set it.
    void OnEditValueChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void showKey();
    void search(const QString &beginning);
    bool takesKey(const QKeyEvent &event);
    void take(int row);
    void finish();
    void followCursor();
    void moveCursor(int row);
    void refreshList();

    void resetDropDownAutoSize() { setDropDownAutoSize(true); }
    void resetDropDownRows() { setDropDownRows(50); }
    void resetDropDownSizeable() { setDropDownSizeable(true); }
    void resetListOptions_ShowHeader() { setListOptions_ShowHeader(false); }
    void resetListOptions_SyncMode() { setListOptions_SyncMode(true); }
    void resetHideSelection() { setHideSelection(true); }
    void resetReadOnly() { setReadOnly(false); }

    TKeyListModel *m_list;
    TListLink *m_listLink;
    TLookupList *m_view;
    TDropDown *m_dropDown;
    QVariant m_key;
    std::optional<QVariant> m_before; // the key in force when the user began
    bool m_showHeader = false, m_syncMode = true, m_hideSelection = true, m_readOnly = false;
    bool m_comesByClick = false;
};

/// The editor of a key on a field.
class TzmDBLookupEdit : public TDataAware<TzmLookupEdit>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool HideSelection READ HideSelection WRITE setHideSelection RESET presetHideSelection)
public:
    explicit TzmDBLookupEdit(QWidget *parent = nullptr) : TDataAware(parent) { presetHideSelection(); }

private:
    void presetHideSelection() { setHideSelection(false); }
};

} // namespace Zelmar01
