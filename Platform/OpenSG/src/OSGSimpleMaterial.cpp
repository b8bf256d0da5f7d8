#include <OpenSG/OSGSimpleMaterial.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(SimpleMaterialBase, SimpleMaterial, SimpleMaterialPtr)

FieldContainerType& SimpleMaterialBase::getClassType()
{
    static FieldContainerType type(
        "SimpleMaterial", &ChunkMaterial::getClassType(), nullptr, &osgCreateSimpleMaterial,
        {OSG_SFIELD_DESC(SimpleMaterialBase, SFColor3f, "ambient", Ambient, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFColor3f, "diffuse", Diffuse, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFColor3f, "specular", Specular, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFReal32, "shininess", Shininess, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFColor3f, "emission", Emission, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFReal32, "transparency", Transparency, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFBool, "lit", Lit, false),
         OSG_SFIELD_DESC(SimpleMaterialBase, SFGLenum, "colorMaterial", ColorMaterial, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(SimpleMaterialBase)

SimpleMaterialBase::SimpleMaterialBase()
    : _sfShininess(Real32(1.f)), _sfTransparency(Real32(0.f)), _sfLit(bool(true)),
      _sfColorMaterial(UInt32(0x1201u))
{}

SimpleMaterialBase::SimpleMaterialBase(const SimpleMaterialBase& source)
    : Inherited(source), _sfAmbient(source._sfAmbient), _sfDiffuse(source._sfDiffuse),
      _sfSpecular(source._sfSpecular), _sfShininess(source._sfShininess), _sfEmission(source._sfEmission),
      _sfTransparency(source._sfTransparency), _sfLit(source._sfLit),
      _sfColorMaterial(source._sfColorMaterial)
{}

SimpleMaterialBase::~SimpleMaterialBase() = default;

SimpleMaterial::SimpleMaterial() = default;

SimpleMaterial::SimpleMaterial(const SimpleMaterial& source) : Inherited(source) {}

SimpleMaterial::~SimpleMaterial() = default;

bool SimpleMaterial::isTransparent() const
{
    if (getTransparencyMode() == TransparencyForceTransparent)
        return true;
    if (getTransparencyMode() == TransparencyForceOpaque)
        return false;
    return getTransparency() > Eps;
}

namespace {
[[maybe_unused]] const bool registered = (SimpleMaterial::getClassType(), true);
} // namespace

} // namespace osg
