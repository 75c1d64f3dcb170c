#pragma once

#include <Zelmar01/tabs/TabTypes.h>

#include <QWidget>

namespace Zelmar01 {

/// Makes the enumerations of TabTypes.h, which knows no Qt, known to properties and forms.
class TTabEnums : public QWidget
{
    Q_OBJECT
public:
    // Spelled out for Qt's compiler alone.
#ifdef Q_MOC_RUN
    enum TExtGlyphPosition{glPosLeft, glPosTop};
    enum TExtTabStyle{tabStDefault, tabStButton};
    enum TExtTabPosition{tabPosLeft, tabPosRight, tabPosTop, tabPosBottom};
    Q_ENUM(TExtGlyphPosition)
    Q_ENUM(TExtTabStyle)
    Q_ENUM(TExtTabPosition)
#else
    using TExtGlyphPosition = Zelmar01::TExtGlyphPosition;
    using TExtTabStyle = Zelmar01::TExtTabStyle;
    using TExtTabPosition = Zelmar01::TExtTabPosition;
    using enum Zelmar01::TExtGlyphPosition;
    using enum Zelmar01::TExtTabStyle;
    using enum Zelmar01::TExtTabPosition;
#endif

protected:
    explicit TTabEnums(QWidget *parent);
};

// What Q_ENUM defines for enumerations that it can stand beside.
constexpr const QMetaObject *qt_getEnumMetaObject(TExtGlyphPosition) noexcept
{
    return &TTabEnums::staticMetaObject;
}
constexpr const char *qt_getEnumName(TExtGlyphPosition) noexcept
{
    return "TExtGlyphPosition";
}
constexpr const QMetaObject *qt_getEnumMetaObject(TExtTabStyle) noexcept
{
    return &TTabEnums::staticMetaObject;
}
constexpr const char *qt_getEnumName(TExtTabStyle) noexcept
{
    return "TExtTabStyle";
}
constexpr const QMetaObject *qt_getEnumMetaObject(TExtTabPosition) noexcept
{
    return &TTabEnums::staticMetaObject;
}
constexpr const char *qt_getEnumName(TExtTabPosition) noexcept
{
    return "TExtTabPosition";
}

} // namespace Zelmar01
