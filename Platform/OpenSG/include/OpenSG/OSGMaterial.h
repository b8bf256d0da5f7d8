#ifndef _OSGMATERIAL_H_
#define _OSGMATERIAL_H_

#include "OSGMaterialBase.h"

namespace osg {

// Base of materials (abstract).
class OSG_SYSTEMLIB_DLLMAPPING Material : public MaterialBase
{
public:
    typedef MaterialBase Inherited;

    enum
    {
        TransparencyAutoDetection = 0,
        TransparencyForceTransparent,
        TransparencyForceOpaque
    };

    virtual bool isTransparent() const = 0;

protected:
    friend class MaterialBase;

    Material();
    Material(const Material& source);
    ~Material() override;
};

// The null material, for comparisons.
OSG_SYSTEMLIB_DLLMAPPING extern const MaterialPtr NullMaterial;

} // namespace osg

#endif
