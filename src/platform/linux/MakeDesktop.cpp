#include "MakeDesktop.h"

#include "X11Desktop.h"
#include "X11ProgramClaim.h"

using namespace Qt::StringLiterals;

namespace lucentra {

std::optional<QString> prepareDesktop()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return isWaylandSession() ? u"Lucentra 在 Wayland 工作階段中需要 XWayland，但找不到它（沒有設定 DISPLAY）。"_s
                                  : u"Lucentra 需要圖形桌面（沒有設定 DISPLAY）。"_s;
    // The pane is placed, kept on top and left out of captures by means of X11, in Wayland sessions as well.
    qputenv("QT_QPA_PLATFORM", "xcb");
    return std::nullopt;
}

std::unique_ptr<Desktop> makeDesktop(const DesktopParts &parts)
{
    return std::make_unique<X11Desktop>(parts.scheduler, parts.bus, parts.mainQueue, parts.localized);
}

std::unique_ptr<ProgramClaim> makeProgramClaim()
{
    return std::make_unique<X11ProgramClaim>();
}

} // namespace lucentra
