#ifndef ZESCENEACCESS_H
#define ZESCENEACCESS_H

// Where a field's value goes in the scene, found once and then written to directly. A target is
// owned by whoever writes the same field again and again (an evaluation plan); it is checked on
// every write against the field and the scene (the container the factory now returns for the
// field's container id, its type, the field's name and component), so a stale target is found
// again rather than trusted.
//
// Internal to the library, never installed.

#include <OpenSG/OSGBaseTypes.h>

#include <string>

class zeAnimationField;

namespace osg {
class Field;
}

struct zeSceneTarget
{
    const void* container = nullptr;
    osg::UInt32 containerId = 0;
    osg::UInt32 typeId = 0;
    osg::UInt32 valuePos = 0;
    std::string name;
    osg::Field* sceneField = nullptr; // null: not resolved to a field written directly
    int kind = 0;
    osg::BitVector mask = 0;
    bool angle = false; // the name makes it an angle, stored in radians and animated in degrees
};

namespace zeSceneAccess {

// zeAnimationUtils::setOSGFieldValue, going straight to the target when it still holds, and
// filling it in when the field is one written directly into its own scene field.
bool writeFieldValue(zeAnimationField* field, zeSceneTarget& target);

} // namespace zeSceneAccess

#endif // ZESCENEACCESS_H
