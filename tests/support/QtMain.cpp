#include <gtest/gtest.h>

#include <QApplication>

namespace {

// A warning of Qt is a fault that no assertion was looking for.
void failOnWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    // What the offscreen platform says of every dialog and popup.
    const bool known = text.startsWith(QLatin1String("This plugin does not support "));
    if (known || type == QtDebugMsg || type == QtInfoMsg)
        fprintf(stderr, "%s\n", qPrintable(text));
    else
        ADD_FAILURE() << "Qt warns: " << text.toStdString();
}

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
