#include <zeUtils/zeMessage.h>

void zeMessage::setValue(const std::string& name, const boost::any& value, bool replace)
{
    auto it = _values.find(name);
    if (it == _values.end())
        _values.emplace(name, value);
    else if (replace)
        it->second = value;
}

bool zeMessage::hasValue(const std::string& name) const
{
    return _values.find(name) != _values.end();
}

boost::any zeMessage::getValue(const std::string& name) const
{
    auto it = _values.find(name);
    return it != _values.end() ? it->second : boost::any();
}

void zeMessage::removeValue(const std::string& name)
{
    _values.erase(name);
}

void zeMessage::clear()
{
    _values.clear();
}

std::vector<std::string> zeMessage::getNames() const
{
    std::vector<std::string> names;
    names.reserve(_values.size());
    for (const auto& entry : _values)
        names.push_back(entry.first);
    return names;
}
