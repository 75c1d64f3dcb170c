#include <Zelmar01/tasks/service/store/JobPage.h>

#include <utility>

namespace Zelmar01 {

namespace {

TJobSheet &current()
{
    static TJobSheet sheet;
    return sheet;
}

} // namespace

TJobSheet SetJobSheet(TJobSheet sheet)
{
    return std::exchange(current(), std::move(sheet));
}

const TJobSheet &JobSheet()
{
    return current();
}

} // namespace Zelmar01
