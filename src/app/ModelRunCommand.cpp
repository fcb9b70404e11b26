#include "Commands.h"

#include "Engines.h"
#include "Services.h"

namespace lucentra {

Result<CommandOutput> runModelCommand(const Invocation &invocation, Services &services)
{
    const auto translate = [&](const QStringList &lines) {
        return services.engines().translateWithModel(invocation.argument, lines, invocation.maxLengthFactor,
                                                     services.texts());
    };
    if (const auto opened = translate({}); !opened)
        return tl::unexpected(opened.error());
    const auto input = standardInput(services.texts());
    if (!input)
        return tl::unexpected(input.error());
    QStringList lines = input->split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast(); // the input ends with a line break
    return translate(lines).map(
        [](const QStringList &translations) { return CommandOutput{.answer = translations.join(u'\n')}; });
}

} // namespace lucentra
