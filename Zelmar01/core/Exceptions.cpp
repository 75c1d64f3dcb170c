#include <Zelmar01/core/Exceptions.h>

#include <system_error>

namespace Zelmar01 {

std::string TSystemCause::Words() const
{
    return Remedy.empty() ? Text : Text + " (" + Remedy + ")";
}

TSystemCause CauseFromErrno(int code, const std::string &subject)
{
    return {code, subject + " : " + std::generic_category().message(code), {}};
}

} // namespace Zelmar01
