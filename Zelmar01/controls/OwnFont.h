#pragma once

#include <QWidget>

namespace Zelmar01 {

/// Keeps a control's font apart from its parent's while ParentFont is false: the control then has the
/// application's font in all its parts, and follows that one only. A font that a host sets on the control
/// replaces it.
class TOwnFont : public QObject
{
public:
    /// `control` owns it and has ParentFont false from now on.
    explicit TOwnFont(QWidget *control);

    bool ParentFont() const { return m_parentFont; }
    void setParentFont(bool parentFont);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &control() const { return *static_cast<QWidget *>(parent()); }
    void giveFont();

    bool m_parentFont = false;
    QFont m_given;
};

/// A control whose preset is a font that is not its parent's; its ParentFont property is made of these.
template<class Control>
class TWithOwnFont : public Control
{
public:
    explicit TWithOwnFont(QWidget *parent = nullptr) : Control(parent), m_font(new TOwnFont(this)) {}

    /// Whether the font is the parent's.
    bool ParentFont() const { return m_font->ParentFont(); }
    void setParentFont(bool parentFont) { m_font->setParentFont(parentFont); }
    void resetParentFont() { setParentFont(false); }

private:
    TOwnFont *m_font;
};

} // namespace Zelmar01
