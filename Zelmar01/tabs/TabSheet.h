#pragma once

#include <QWidget>

namespace Zelmar01 {

class TExtPageControl;

/// A page of a page control: a widget with a caption. It is transparent, so the control's page area shows
/// through.
///
/// A page disabled by setEnabled(false) keeps its tab, which the user cannot reach.
class TTabSheet : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
    Q_PROPERTY(int PageIndex READ PageIndex WRITE setPageIndex DESIGNABLE false STORED false)
    Q_PROPERTY(int TabIndex READ TabIndex DESIGNABLE false STORED false)
    Q_PROPERTY(bool TabVisible READ TabVisible WRITE setTabVisible RESET resetTabVisible)
    Q_PROPERTY(int Tag READ Tag WRITE setTag)
public:
    /// A page whose parent is a page control becomes its last page.
    explicit TTabSheet(QWidget *parent = nullptr);
    ~TTabSheet() override;

    /// The text of the tab. "&" marks the character that Alt selects the page by, "&&" is one ampersand.
    const QString &Caption() const { return m_caption; }
    void setCaption(const QString &caption);

    /// Null for a page that belongs to none.
    TExtPageControl *PageControl() const { return m_pageControl; }
    /// The place among all pages, -1 without a page control. Setting it moves the page, at most to the end.
    int PageIndex() const;
    void setPageIndex(int index);
    /// The place among the visible tabs, -1 when the tab is hidden.
    int TabIndex() const { return m_tabIndex; }
    /// Whether the page has a tab; in a form designer it always has.
    bool TabVisible() const { return m_tabVisible; }
    void setTabVisible(bool visible);

    bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }
    void setEnabled(bool enabled);

    /// The host's own number; the glyph of the page in a TExtPageControlTag.
    int Tag() const { return m_tag; }
    void setTag(int tag);

    /// Frees the page's native window, if it has one; page and contents stay.
    void DestroyHandle();

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    friend class TExtPageControl;
    void resetTabVisible() { setTabVisible(true); }

    QString m_caption;
    TExtPageControl *m_pageControl = nullptr;
    int m_tabIndex = -1;
    bool m_tabVisible = true;
    int m_tag = 0;
};

} // namespace Zelmar01
