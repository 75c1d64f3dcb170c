#pragma once

class QWidget;

namespace Zelmar01 {

/// A control that shows one of its pages, which are its children, at a time.
class IPages
{
public:
    /// Shows a page, as if the user had chosen it.
    virtual void ShowPage(QWidget &page) = 0;

protected:
    ~IPages() = default;
};

/// Shows the pages on which a widget stands: of an IPages, a QTabWidget or a QStackedWidget. What is hidden
/// in another way stays so.
void ShowPagesOf(QWidget &widget);

} // namespace Zelmar01
