// Any text as a trigger on the command line, and any bytes as the text of a ticket: no crash, no hang, and
// what is accepted means the same when it is written and read again.

#include "Fuzz.h"

#include "../../tools/jobs/Options.h"
#include "../../tools/jobs/TriggerNotation.h"
#include "../../tools/print/TicketText.h"

#include <Zelmar01/tasks/service/Triggers.h>

#include <QStringDecoder>

#include <cstdlib>

using namespace Zelmar01;

namespace {

void require(bool promise)
{
    if (!promise)
        std::abort();
}

void asTrigger(const std::string &input)
{
    const QDateTime now({2027, 1, 31}, {23, 59});
    try {
        const auto trigger = ParseTrigger(QString::fromStdString(input), now);
        require(CheckTrigger(&trigger) == TaskResult::Ok);
        const auto notation = NotationOf(trigger);
        require(notation.isEmpty() || NotationOf(ParseTrigger(notation, now.addYears(1))) == notation);
    } catch (const EUsage &) {
    }
}

void asTicket(const std::string &input)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(QByteArrayView(input));
    require((FirstByteOutsideUtf8(input) < 0) == !decoder.hasError());
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    static const std::vector<std::string> seeds{"once 2027-01-31T04:30",
                                                "daily 04:30 every=2 from=2027-02-01 to=2027-12-31",
                                                "weekly 04:30 days=mon,fri every=2 repeat=15 for=480 kill",
                                                "monthly 04:30 days=1,15,31 months=1,7 off",
                                                "monthly 04:30 week=last days=fri",
                                                "startup",
                                                "Bague dor\xC3\xA9"
                                                "e 49,90 \xE2\x82\xAC \xF0\x9F\x92\x8D"};
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char *>(data), size);
    asTrigger(input);
    asTicket(input);
    return 0;
}
