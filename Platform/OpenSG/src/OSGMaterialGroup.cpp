#include <OpenSG/OSGMaterialGroup.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(MaterialGroupBase, MaterialGroup, MaterialGroupPtr)

FieldContainerType& MaterialGroupBase::getClassType()
{
    static FieldContainerType type(
        "MaterialGroup", &Group::getClassType(), nullptr, &osgCreateMaterialGroup,
        {OSG_SFIELD_DESC(MaterialGroupBase, SFMaterialPtr, "material", Material, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(MaterialGroupBase)

MaterialGroupBase::MaterialGroupBase() {}

MaterialGroupBase::MaterialGroupBase(const MaterialGroupBase& source)
    : Inherited(source), _sfMaterial(source._sfMaterial)
{
    // The copy shares the referenced containers, so it takes its own references.
    addRefCP(_sfMaterial.getValue());
}

MaterialGroupBase::~MaterialGroupBase()
{
    clearRefCP(_sfMaterial.getValue());
}

MaterialGroup::MaterialGroup() = default;

MaterialGroup::MaterialGroup(const MaterialGroup& source) : Inherited(source) {}

MaterialGroup::~MaterialGroup() = default;

namespace {
[[maybe_unused]] const bool registered = (MaterialGroup::getClassType(), true);
} // namespace

} // namespace osg
