#pragma once

#include "GObjectPointer.h"

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// Makes the Secret Service ask the user to unlock a keyring, or to create the first one, without waiting for the user.
///
/// There is one prompt at a time, and none within 30 seconds of a refusal. All calls must be on one thread, whose
/// thread-default main context is iterated between them, so that the end of a prompt is noticed.
class KeyringPrompt
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    explicit KeyringPrompt(Clock clock);
    ~KeyringPrompt();

    /// Starts the prompt; takes about a second at most. `locked` are object paths of the keyrings and items to unlock;
    /// if there are none, the default keyring is to be created. Errors are ignored, since the caller's own failure says
    /// what is missing.
    void ask(GDBusConnection *bus, const QByteArrayList &locked, GCancellable *cancel);

    /// To be called when the bus has ended, and with it the prompt.
    void forget();

private:
    struct Shown;

    bool mayAsk(const QByteArray &owner) const;
    void show(GDBusConnection *bus, const QByteArray &owner, const QByteArray &path, GCancellable *cancel);

    const Clock m_clock;
    std::unique_ptr<Shown> m_shown; ///< the last prompt
};

} // namespace lucentra
