#include <OpenSG/OSGMaterial.h>

namespace osg {

FieldContainerType& MaterialBase::getClassType()
{
    static FieldContainerType type(
        "Material", &AttachmentContainer::getClassType(), nullptr, nullptr,
        {OSG_SFIELD_DESC(MaterialBase, SFInt32, "sortKey", SortKey, false),
         OSG_SFIELD_DESC(MaterialBase, SFInt32, "transparencyMode", TransparencyMode, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(MaterialBase)

MaterialBase::MaterialBase() : _sfSortKey(Int32(0)), _sfTransparencyMode(Int32(0)) {}

MaterialBase::MaterialBase(const MaterialBase& source)
    : Inherited(source), _sfSortKey(source._sfSortKey), _sfTransparencyMode(source._sfTransparencyMode)
{}

MaterialBase::~MaterialBase() = default;

Material::Material() = default;

Material::Material(const Material& source) : Inherited(source) {}

Material::~Material() = default;

const MaterialPtr NullMaterial;

namespace {
[[maybe_unused]] const bool registered = (Material::getClassType(), true);
} // namespace

} // namespace osg
