#include <zeOpenSGUtils/zeOpenSGUtils.h>

#include <map>

namespace {

std::map<std::string, zeOpenSGUtils::Receiver>& receivers()
{
    static std::map<std::string, zeOpenSGUtils::Receiver> map;
    return map;
}

} // namespace

void zeOpenSGUtils::call(const std::string& name, zeMessage& message, int)
{
    auto it = receivers().find(name);
    if (it == receivers().end() || !it->second)
        return;
    // A copy, so a receiver may unregister or replace itself while it runs.
    Receiver receiver = it->second;
    receiver(message);
}

void zeOpenSGUtils::registerReceiver(const std::string& name, Receiver receiver)
{
    if (!receiver) {
        unregisterReceiver(name);
        return;
    }
    receivers()[name] = std::move(receiver);
}

void zeOpenSGUtils::unregisterReceiver(const std::string& name)
{
    receivers().erase(name);
}
