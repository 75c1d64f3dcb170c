#pragma once

#include <QTranslator>

namespace Zelmar01 {

/// The texts of QCommandLineParser in French, whether Qt's own translations are installed or not.
class FrenchParserTexts : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *disambiguation,
                      int n) const override;
};

} // namespace Zelmar01
