#pragma once

#include "LocalizationManager.h"
#include "ShellActions.h"

#include <QAction>

namespace lucentra {

/// Title of the menu items that switch live translation.
inline constexpr QStringView liveItemKey = u"即時翻譯";

/// Shows the state in such an item, or why live translation isn't available.
inline void showLiveState(QAction &item, const ShellActions &actions, const LocalizationManager &texts)
{
    const bool isAllowed = actions.canBeLive && actions.canBeLive();
    item.setEnabled(isAllowed);
    item.setChecked(isAllowed && actions.isLive());
    item.setText(texts.localized(isAllowed ? liveItemKey.toString()
                                           : QStringLiteral("即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）")));
}

} // namespace lucentra
