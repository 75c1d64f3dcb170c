#pragma once

#include <QObject>

namespace Zelmar01 {

/// The base of the components that have no window of their own.
///
/// A component whose owner is a widget may be part of a form that is still being built, and a form sets
/// properties in any order. It is therefore loading until its owner is polished (which happens just before
/// the form is first shown) or until Loaded() is called, whichever comes first. While a component is loading,
/// an error in a property goes to the exception display; afterwards it is raised. A component with another
/// owner, with none, or with one that is already on screen, is never loading. One that is moved while it is
/// loading goes on with its new owner when the event loop runs.
class TComponent : public QObject
{
    Q_OBJECT
public:
    /// `owner` frees the component with itself; without one the caller does.
    explicit TComponent(QObject *owner = nullptr);

    bool IsLoading() const { return m_loading; }

    /// Ends loading. Hosts call it when they have built a form in code and want errors raised before it is
    /// shown; a second call does nothing.
    virtual void Loaded();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void followOwner();

    bool m_loading = false;
};

} // namespace Zelmar01
