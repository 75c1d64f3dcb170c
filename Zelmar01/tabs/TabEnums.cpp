#include <Zelmar01/tabs/TabEnums.h>

namespace Zelmar01 {

TTabEnums::TTabEnums(QWidget *parent) : QWidget(parent) {}

} // namespace Zelmar01
