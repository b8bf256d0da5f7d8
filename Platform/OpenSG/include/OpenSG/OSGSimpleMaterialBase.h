#ifndef _OSGSIMPLEMATERIALBASE_H_
#define _OSGSIMPLEMATERIALBASE_H_

#include "OSGChunkMaterial.h"
#include "OSGSFBaseTypes.h"
#include "OSGSFSysTypes.h"
#include "OSGSimpleMaterialFields.h"

namespace osg {

class SimpleMaterial;

// Material with the classic colour parameters. Colours are Color3f; transparency 0 is opaque;
// colorMaterial holds a GL enum value as a number (default GL_DIFFUSE).
class OSG_SYSTEMLIB_DLLMAPPING SimpleMaterialBase : public ChunkMaterial
{
public:
    typedef ChunkMaterial Inherited;
    typedef SimpleMaterialPtr Ptr;

    enum
    {
        AmbientFieldId = Inherited::NextFieldId,
        DiffuseFieldId = AmbientFieldId + 1,
        SpecularFieldId = DiffuseFieldId + 1,
        ShininessFieldId = SpecularFieldId + 1,
        EmissionFieldId = ShininessFieldId + 1,
        TransparencyFieldId = EmissionFieldId + 1,
        LitFieldId = TransparencyFieldId + 1,
        ColorMaterialFieldId = LitFieldId + 1,
        NextFieldId = ColorMaterialFieldId + 1
    };
    static constexpr BitVector AmbientFieldMask = TypeTraits<BitVector>::One << AmbientFieldId;
    static constexpr BitVector DiffuseFieldMask = TypeTraits<BitVector>::One << DiffuseFieldId;
    static constexpr BitVector SpecularFieldMask = TypeTraits<BitVector>::One << SpecularFieldId;
    static constexpr BitVector ShininessFieldMask = TypeTraits<BitVector>::One << ShininessFieldId;
    static constexpr BitVector EmissionFieldMask = TypeTraits<BitVector>::One << EmissionFieldId;
    static constexpr BitVector TransparencyFieldMask = TypeTraits<BitVector>::One << TransparencyFieldId;
    static constexpr BitVector LitFieldMask = TypeTraits<BitVector>::One << LitFieldId;
    static constexpr BitVector ColorMaterialFieldMask = TypeTraits<BitVector>::One << ColorMaterialFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(SimpleMaterialPtr)

    OSG_SFIELD_ACCESSORS(SFColor3f, Color3f, Ambient)
    OSG_SFIELD_ACCESSORS(SFColor3f, Color3f, Diffuse)
    OSG_SFIELD_ACCESSORS(SFColor3f, Color3f, Specular)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Shininess)
    OSG_SFIELD_ACCESSORS(SFColor3f, Color3f, Emission)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Transparency)
    OSG_SFIELD_ACCESSORS(SFBool, bool, Lit)
    OSG_SFIELD_ACCESSORS(SFGLenum, UInt32, ColorMaterial)

protected:
    SimpleMaterialBase();
    SimpleMaterialBase(const SimpleMaterialBase& source);
    ~SimpleMaterialBase() override;
};

} // namespace osg

#endif
