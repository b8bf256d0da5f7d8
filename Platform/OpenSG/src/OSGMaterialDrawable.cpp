#include <OpenSG/OSGMaterialDrawable.h>

namespace osg {

FieldContainerType& MaterialDrawableBase::getClassType()
{
    static FieldContainerType type(
        "MaterialDrawable", &Drawable::getClassType(), nullptr, nullptr,
        {OSG_SFIELD_DESC(MaterialDrawableBase, SFMaterialPtr, "material", Material, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(MaterialDrawableBase)

MaterialDrawableBase::MaterialDrawableBase() {}

MaterialDrawableBase::MaterialDrawableBase(const MaterialDrawableBase& source)
    : Inherited(source), _sfMaterial(source._sfMaterial)
{
    // The copy shares the referenced containers, so it takes its own references.
    addRefCP(_sfMaterial.getValue());
}

MaterialDrawableBase::~MaterialDrawableBase()
{
    clearRefCP(_sfMaterial.getValue());
}

MaterialDrawable::MaterialDrawable() = default;

MaterialDrawable::MaterialDrawable(const MaterialDrawable& source) : Inherited(source) {}

MaterialDrawable::~MaterialDrawable() = default;

namespace {
[[maybe_unused]] const bool registered = (MaterialDrawable::getClassType(), true);
} // namespace

} // namespace osg
