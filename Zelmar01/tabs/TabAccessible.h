#pragma once

namespace Zelmar01 {

class TExtCustomTab;

// What a screen reader is told of tab controls: a list of tabs, each with its name, its state and its place,
// followed by the widgets on the control. A page has the name of its tab.

/// Makes tab controls and pages known to assistive technology; more calls do nothing.
void InstallTabAccessibility();

// Notices for assistive technology that is listening.
void TellTabsChanged(TExtCustomTab *control);
void TellTabChanged(TExtCustomTab *control, int tab);
void TellSelectionChanged(TExtCustomTab *control);

} // namespace Zelmar01
