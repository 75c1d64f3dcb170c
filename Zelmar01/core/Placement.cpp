#include <Zelmar01/core/Placement.h>

#include <QResizeEvent>
#include <QWidget>

namespace Zelmar01 {

namespace {

struct TSpan
{
    int Start, Length;
};

TSpan moved(TSpan span, bool keepsStart, bool keepsEnd, int before, int now)
{
    const int grown = now - before;
    if (keepsStart && keepsEnd)
        return {span.Start, qMax(0, span.Length + grown)};
    if (keepsEnd)
        return {span.Start + grown, span.Length};
    if (keepsStart || before == span.Length)
        return span;
    return {span.Start + grown * span.Start / (before - span.Length), span.Length};
}

// A child that was never shown or hidden comes with its parent.
bool isAway(const QWidget &control)
{
    return control.isHidden() && control.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

QRect taken(QRect &room, TPlacement::TAlign align, const QSize &size)
{
    auto place = room;
    switch (align) {
    case TPlacement::alTop:
        place.setHeight(size.height());
        room.setTop(room.top() + size.height());
        break;
    case TPlacement::alBottom:
        place.setTop(room.bottom() + 1 - size.height());
        room.setBottom(room.bottom() - size.height());
        break;
    case TPlacement::alLeft:
        place.setWidth(size.width());
        room.setLeft(room.left() + size.width());
        break;
    case TPlacement::alRight:
        place.setLeft(room.right() + 1 - size.width());
        room.setRight(room.right() - size.width());
        break;
    default:
        break;
    }
    return place;
}

} // namespace

TPlacement::TPlacement(QWidget *control) : QObject(control)
{
    control->installEventFilter(this);
    follow();
}

QWidget *TPlacement::control() const
{
    return static_cast<QWidget *>(parent());
}

void TPlacement::setAlign(TAlign align)
{
    if (align == m_align)
        return;
    m_align = align;
    follow();
}

void TPlacement::setAnchors(TAnchors anchors)
{
    m_anchors = anchors;
    m_place = {};
}

void TPlacement::follow()
{
    auto *form = control()->parentWidget();
    if (m_followed != form) {
        if (m_followed)
            m_followed->removeEventFilter(this);
        m_followed = form;
        if (form)
            form->installEventFilter(this);
    }
    if (form && m_align != alNone && m_align != alCustom)
        alignChildren(*form);
}

bool TPlacement::eventFilter(QObject *watched, QEvent *event)
{
    const auto type = event->type();
    if (watched == control()) {
        if (type == QEvent::ParentChange || type == QEvent::ShowToParent || type == QEvent::HideToParent ||
            type == QEvent::Resize)
            follow();
    } else if (watched == m_followed && type == QEvent::Resize) {
        const auto &resize = static_cast<const QResizeEvent &>(*event);
        if (m_align == alNone)
            keepDistance(resize.oldSize(), resize.size());
        else
            follow();
    }
    return QObject::eventFilter(watched, event);
}

void TPlacement::keepDistance(const QSize &before, const QSize &now)
{
    const auto *form = control()->parentWidget();
    if (!form || form->layout() || !before.isValid())
        return;
    // Told anew only when somebody else has placed the control: rounding never adds up, and a length that was
    // cut to nothing comes back.
    if (control()->geometry() != m_place) {
        m_origin = control()->geometry();
        m_formOfOrigin = before;
    }
    const auto &place = m_origin;
    const auto across = moved({place.left(), place.width()}, m_anchors.testFlag(akLeft),
                              m_anchors.testFlag(akRight), m_formOfOrigin.width(), now.width());
    const auto down = moved({place.top(), place.height()}, m_anchors.testFlag(akTop),
                            m_anchors.testFlag(akBottom), m_formOfOrigin.height(), now.height());
    control()->setGeometry(across.Start, down.Start, across.Length, down.Length);
    m_place = control()->geometry();
}

void TPlacement::alignChildren(const QWidget &form)
{
    if (form.layout())
        return;
    auto room = form.contentsRect();
    for (const auto align : {alTop, alBottom, alLeft, alRight, alClient})
        for (auto *child : form.children()) {
            auto *placement = child->findChild<TPlacement *>({}, Qt::FindDirectChildrenOnly);
            if (!placement || placement->m_align != align || isAway(*placement->control()))
                continue;
            placement->control()->setGeometry(taken(room, align, placement->control()->size()));
        }
}

} // namespace Zelmar01
