#ifndef _OSGTRANSFORM3DBASE_H_
#define _OSGTRANSFORM3DBASE_H_

#include "OSGTransform3DFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGSFVecTypes.h>
#include <OpenSG/OSGTransform.h>

namespace osg {

class Transform3D;

// Transform core of the host: translation and scale are fields of the core, the rotation lives in
// the node's TransformAttachment.
class OSG_ZEOPENSGEXT_DLLMAPPING Transform3DBase : public Transform
{
public:
    typedef Transform Inherited;
    typedef Transform3DPtr Ptr;

    enum
    {
        TranslationFieldId = Inherited::NextFieldId,
        ScaleFieldId = TranslationFieldId + 1,
        NextFieldId = ScaleFieldId + 1
    };
    static constexpr BitVector TranslationFieldMask = TypeTraits<BitVector>::One << TranslationFieldId;
    static constexpr BitVector ScaleFieldMask = TypeTraits<BitVector>::One << ScaleFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(Transform3DPtr)

    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Translation)
    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Scale)

protected:
    Transform3DBase();
    Transform3DBase(const Transform3DBase& source);
    ~Transform3DBase() override;
};

} // namespace osg

#endif
