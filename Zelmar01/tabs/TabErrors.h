#pragma once

#include <Zelmar01/core/Exceptions.h>

#include <QCoreApplication>

namespace Zelmar01 {

/// A tab index that no page has.
class EExtPageInvalidCall : public Exception
{
public:
    using Exception::Exception;
};

/// An index beyond the end of a list, such as that of a page for which TabHints has no line.
class EStringListError : public Exception
{
public:
    explicit EStringListError(int index)
        : Exception(QCoreApplication::translate("Zelmar01", "Indice de liste hors limites (%1)")
                        .arg(index)
                        .toStdString())
    {
    }
};

} // namespace Zelmar01
