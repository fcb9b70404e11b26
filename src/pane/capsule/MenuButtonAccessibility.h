#pragma once

class QAbstractButton;
class QMenu;

namespace lucentra {

/// Makes a menu the accessible child of a button, as the toolkit does for its own menu buttons. Replaces the menu of an
/// earlier call.
void showMenuInAccessibleTree(QAbstractButton &button, QMenu *menu);

} // namespace lucentra
