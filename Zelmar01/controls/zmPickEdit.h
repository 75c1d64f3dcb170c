#pragma once

#include <Zelmar01/controls/OwnFont.h>

#include <QComboBox>

namespace Zelmar01 {

class TDropDown;

/// A line of text, typed or picked from a list. What is typed does not become an entry.
class TzmPickEdit : public TWithOwnFont<QComboBox>
{
    Q_OBJECT
    Q_PROPERTY(int DropDownRows READ maxVisibleItems WRITE setDropDownRows RESET resetDropDownRows)
    Q_PROPERTY(
        int maxVisibleItems READ maxVisibleItems WRITE setMaxVisibleItems DESIGNABLE false STORED false)
    Q_PROPERTY(
        bool DropDownSizeable READ DropDownSizeable WRITE setDropDownSizeable RESET resetDropDownSizeable)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly RESET resetReadOnly)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont RESET resetParentFont)
public:
    explicit TzmPickEdit(QWidget *parent = nullptr);

    /// The most rows that the list shows at a time.
    void setDropDownRows(int rows) { setMaxVisibleItems(rows); }
    /// Whether the user can give the list another size.
    bool DropDownSizeable() const;
    void setDropDownSizeable(bool sizeable);
    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void resetDropDownRows() { setDropDownRows(50); }
    void resetDropDownSizeable() { setDropDownSizeable(true); }
    void resetReadOnly() { setReadOnly(false); }

    TDropDown *m_dropDown;
    bool m_readOnly = false;
};

} // namespace Zelmar01
