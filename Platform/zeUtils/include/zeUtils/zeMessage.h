#ifndef ZEUTILS_ZEMESSAGE_H
#define ZEUTILS_ZEMESSAGE_H

#include <boost/any.hpp>

#include <map>
#include <string>
#include <vector>

// A named-value record sent between the host and its libraries (see zeOpenSGUtils::call).
// Values are boost::any; the receiver knows which type to expect for each name.
class zeMessage
{
public:
    // Stores value under name. With replace false an existing value is kept.
    void setValue(const std::string& name, const boost::any& value, bool replace = true);
    // An empty any when there is no such value.
    boost::any getValue(const std::string& name) const;

private:
    std::map<std::string, boost::any> _values;
};

#endif
