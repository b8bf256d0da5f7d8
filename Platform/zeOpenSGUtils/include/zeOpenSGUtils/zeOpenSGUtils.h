#ifndef ZEOPENSGUTILS_ZEOPENSGUTILS_H
#define ZEOPENSGUTILS_ZEOPENSGUTILS_H

#include <zeUtils/zeMessage.h>

#include <functional>
#include <string>

// Named message delivery between the host and its libraries. The host (or a test) registers one
// receiver per message name; libraries send with call(). Everything runs on the caller's thread.
class zeOpenSGUtils
{
public:
    typedef std::function<void(zeMessage&)> Receiver;

    // Delivers message to the receiver registered for name; without one nothing happens.
    // The int is the host's delivery flags; nothing here depends on it.
    static void call(const std::string& name, zeMessage& message, int flags);

    // Replaces any receiver registered for name. An empty function unregisters.
    static void registerReceiver(const std::string& name, Receiver receiver);
    static void unregisterReceiver(const std::string& name);
};

#endif
