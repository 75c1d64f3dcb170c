#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <string>

namespace Zelmar01 {

/// What the form designer shows of a class and does with it, beside what its registration says.
struct TDesignerLook
{
    QString ObjectName;       ///< of the first one on a form; the others are numbered
    QString ToolTip;          ///< in the palette
    QSize Size;               ///< of one that is dropped; empty for the one that it wants itself
    bool HasPages = false;    ///< it holds pages, and begins with two of them
    bool TakesOthers = false; ///< other components can be dropped into it
    /// Text properties without line breaks that are never translated, such as names of fields.
    QStringList PlainTexts;
    QString Text; ///< the caption of one that is dropped and would not be seen without
};

/// The look of a registered class; raises EInvalidOperation for a class that has none.
TDesignerLook LookOf(const std::string &className);

} // namespace Zelmar01
