#ifndef ZESCENEACCESS_H
#define ZESCENEACCESS_H

// Where a field's value goes in the scene, found once and then written to directly. A target is
// owned by whoever writes the same field again and again (an evaluation plan). Before each write
// it is checked against what may change without the pool noticing: the container the factory now
// returns for the field's container id (none once it is destroyed; container ids are never
// reused, so a container found under the id the target was made for is the container it was made
// for), and the field's public container id, component and name. A stale target is found again
// rather than trusted.
//
// Internal to the library, never installed.

#include <OpenSG/OSGBaseTypes.h>

#include <cstdint>

class zeAnimationField;

struct zeSceneTarget
{
    const void* container = nullptr; // only to be fetched ahead of the write
    void* component = nullptr;       // the float (or double) written; null: not resolved
    osg::BitVector mask = 0;
    osg::UInt32 containerId = 0;
    osg::UInt32 valuePos = 0;
    osg::UInt32 name = 0; // the number of the scene field's name, kept once for all targets
    std::uint8_t kind = 0;
    bool angle = false; // the name makes it an angle, stored in radians and animated in degrees
};

namespace zeSceneAccess {

// zeAnimationUtils::setOSGFieldValue, going straight to the target when it still holds, and
// filling it in when the field is one written directly into its own scene field.
bool writeFieldValue(zeAnimationField* field, zeSceneTarget& target);

} // namespace zeSceneAccess

#endif // ZESCENEACCESS_H
