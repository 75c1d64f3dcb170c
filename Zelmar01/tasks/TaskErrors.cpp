#include <Zelmar01/tasks/TaskErrors.h>

namespace Zelmar01 {

void OleCheck(ITaskService &service, TTaskResult result)
{
    if (Failed(result))
        throw EOleSysError(service.DescribeResult(result), result, service.ExplainResult(result));
}

QString Format(const QString &fmt, const QVariantList &args)
{
    QString text;
    qsizetype next = 0;
    for (qsizetype i = 0; i < fmt.size(); ++i) {
        const auto kind = fmt[i] == u'%' && i + 1 < fmt.size() ? fmt[i + 1] : QChar();
        if ((kind == u's' || kind == u'd') && next < args.size()) {
            text += args[next++].toString();
            ++i;
        } else {
            text += fmt[i];
        }
    }
    return text;
}

QString Format(TMessage message, const QVariantList &args)
{
    return Format(QString::fromStdString(MessageText(message)), args);
}

} // namespace Zelmar01
