#pragma once

class QAbstractButton;
class QMenu;

namespace lucentra {

/// Shows assistive programs a button's menu as what is in the button, which the toolkit does for its own buttons alone.
/// Another menu takes its place by calling this again. Main thread only.
void showMenuInAccessibleTree(QAbstractButton &button, QMenu *menu);

} // namespace lucentra
