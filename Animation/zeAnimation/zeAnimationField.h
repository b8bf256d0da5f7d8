#ifndef ZEANIMATIONFIELD_H
#define ZEANIMATIONFIELD_H

#include <zeAnimation/zeAnimationConfig.h>

#include <OpenSG/OSGBaseTypes.h>

#include <cstddef>
#include <string>

// Binds animation data to one float of the scene: one component of one field of one scene field
// container (or a derived camera or node property). The manager owns every field; curves name
// their field by identifier. Members are public because the manager, the scene utilities and the
// file code read and write them directly.
class ZEANIMATION_EXPORT zeAnimationField
{
    friend class zeAnimationManager;

public:
    osg::UInt64 fcID;
    osg::UInt64 nodeID;
    std::string name;
    std::string attribute;
    float value;
    osg::UInt32 valuePos;
    bool dirty;

    osg::UInt64 getId() const { return id; }

    // Fields live side by side in blocks of their own (see zeAnimationField.cpp).
    static void* operator new(std::size_t size);
    static void operator delete(void* field, std::size_t size);

    // Assignment makes an exact twin, identifier included, which the manager must not register.
    zeAnimationField& operator=(const zeAnimationField& other);

protected:
    explicit zeAnimationField(osg::UInt64 id = 0);
    // A copied field is a new field: it always takes a fresh identifier.
    zeAnimationField(const zeAnimationField& other);
    ~zeAnimationField();

    void setId(osg::UInt64 value) { id = value; }

    osg::UInt64 id;
};

#endif // ZEANIMATIONFIELD_H
