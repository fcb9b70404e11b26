#pragma once

#include "GObjectPointer.h"

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// What the user is asked for.
struct KeyringRequest
{
    QByteArrayList locked; ///< object paths of keyrings and items to unlock; none: make the default keyring
};

/// Has the Secret Service ask the user to unlock a keyring, or to make the first one, without waiting for the user.
///
/// The user is asked once at a time, and not again within 30 seconds of a refusal. All on one thread, whose
/// thread-default main context is iterated between the calls: that is how the end of a prompt is noticed.
class KeyringPrompt
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    explicit KeyringPrompt(Clock clock);
    ~KeyringPrompt();
    KeyringPrompt(const KeyringPrompt &) = delete;
    KeyringPrompt &operator=(const KeyringPrompt &) = delete;

    /// Starts the prompt; takes about a second at most. What can't be asked is dropped: the caller's own failure
    /// says what is missing.
    void ask(GDBusConnection *bus, const KeyringRequest &request, GCancellable *cancel);

    /// The bus is gone, and with it the prompt.
    void forget();

private:
    struct Shown;

    bool mayAsk(const QByteArray &owner) const;
    void show(GDBusConnection *bus, const QByteArray &owner, const QByteArray &path, GCancellable *cancel);

    const Clock m_clock;
    std::unique_ptr<Shown> m_shown; ///< the last prompt
};

} // namespace lucentra
