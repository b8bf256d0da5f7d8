#include <zeUtils/zeMessage.h>

void zeMessage::setValue(const std::string& name, const boost::any& value, bool replace)
{
    auto it = _values.find(name);
    if (it == _values.end())
        _values.emplace(name, value);
    else if (replace)
        it->second = value;
}

boost::any zeMessage::getValue(const std::string& name) const
{
    auto it = _values.find(name);
    return it != _values.end() ? it->second : boost::any();
}
