#pragma once

#include <Zelmar01/core/Exceptions.h>

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
        : Exception("Indice de liste hors limites (" + std::to_string(index) + ")")
    {
    }
};

} // namespace Zelmar01
