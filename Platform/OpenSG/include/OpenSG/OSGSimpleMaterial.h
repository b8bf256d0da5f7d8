#ifndef _OSGSIMPLEMATERIAL_H_
#define _OSGSIMPLEMATERIAL_H_

#include "OSGSimpleMaterialBase.h"

namespace osg {

// Material with the classic colour parameters. Colours are Color3f; transparency 0 is opaque;
// colorMaterial holds a GL enum value as a number (default GL_DIFFUSE).
class OSG_SYSTEMLIB_DLLMAPPING SimpleMaterial : public SimpleMaterialBase
{
public:
    typedef SimpleMaterialBase Inherited;

    // Transparent when transparency is above zero, unless the mode forces an answer.
    bool isTransparent() const override;

protected:
    friend class SimpleMaterialBase;

    SimpleMaterial();
    SimpleMaterial(const SimpleMaterial& source);
    ~SimpleMaterial() override;
};

} // namespace osg

#endif
