#pragma once

#include <Zelmar01/core/Exceptions.h>

namespace Zelmar01 {

/// An operation that a dataset or a database refused. The cause has the database's own words; it is empty
/// when the dataset itself refused.
class EDatabaseError : public Exception
{
public:
    using Exception::Exception;
};

/// The database cannot be reached, or its connection was lost with what stood in an open transaction. The
/// same operation may succeed later on.
class EDatabaseUnreachable : public EDatabaseError
{
public:
    using EDatabaseError::EDatabaseError;
};

} // namespace Zelmar01
