#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace lucentra {

/// The whole-pixel size at which overlay texts are shaped. The toolkit rounds font sizes to whole pixels, but
/// fitting works in half points, so every size is drawn as a scale of this one. At 128 pixels an em the fonts'
/// 26.6 fixed-point metrics are exact to 1/8192 em.
inline constexpr int overlayReferencePixels = 128;

/// The font families for texts in a language (a BCP 47 tag) by priority: first the family of its script with the shapes
/// of its region, then those of other scripts.
QStringList textFamilies(const QString &language);

/// The bold font of overlays for texts in a target language (a BCP 47 tag), at the reference size and unhinted. Its
/// first family covers the language's script, so that line heights fit it; families of other scripts follow. `family`,
/// if it isn't empty and is installed, comes before them.
QFont overlayFont(const QString &targetLanguage, const QString &family = {});

} // namespace lucentra
