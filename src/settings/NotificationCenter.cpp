#include "NotificationCenter.h"

#include <utility>

namespace lucentra {

void NotificationCenter::post(QLatin1StringView name, const QVariant &value)
{
    Q_EMIT posted(name, value);
}

void NotificationCenter::observe(QLatin1StringView name, QObject *context, Callback callback)
{
    connect(this, &NotificationCenter::posted, context,
            [observed = name, callback = std::move(callback)](QLatin1StringView postedName, const QVariant &value) {
                if (postedName == observed)
                    callback(value);
            });
}

} // namespace lucentra
