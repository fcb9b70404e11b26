#include "Commands.h"

#include "LocalizationManager.h"
#include "NeuralModel.h"
#include "Services.h"

using namespace Qt::StringLiterals;

namespace lucentra {

QString modelErrorText(const NeuralModelError &error, const LocalizationManager &texts)
{
    switch (error.kind) {
    case NeuralModelError::Kind::Missing:
        return texts.formatted(u"資料夾裡沒有模型的這個檔案，或無法讀取：%@"_s, error.detail);
    case NeuralModelError::Kind::Damaged:
        return texts.formatted(u"模型的檔案已損壞：%@"_s, error.detail);
    case NeuralModelError::Kind::Unsupported:
        break;
    }
    return texts.formatted(u"不支援這種模型：%@"_s, error.detail);
}

Result<CommandOutput> runModelCommand(const Invocation &invocation, Services &services)
{
    const auto model = NeuralModel::open(invocation.argument);
    if (!model)
        return commandFailed(modelErrorText(model.error(), services.texts()));
    const auto input = standardInput(services.texts());
    if (!input)
        return tl::unexpected(input.error());
    QStringList lines = input->split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast(); // the input ends with a line break
    QStringList translations;
    for (const NeuralModel::Translation &translation :
         (*model)->translate(lines, {.lengthFactor = invocation.maxLengthFactor}))
        translations.append(translation.text);
    return CommandOutput{.answer = translations.join(u'\n')};
}

} // namespace lucentra
