#ifndef _OSGTRANSFORMBASE_H_
#define _OSGTRANSFORMBASE_H_

#include "OSGGroup.h"
#include "OSGSFMathTypes.h"
#include "OSGTransformFields.h"

namespace osg {

class Transform;

// Core that transforms its node's subtree by "matrix".
class OSG_SYSTEMLIB_DLLMAPPING TransformBase : public Group
{
public:
    typedef Group Inherited;
    typedef TransformPtr Ptr;

    enum
    {
        MatrixFieldId = Inherited::NextFieldId,
        NextFieldId = MatrixFieldId + 1
    };
    static constexpr BitVector MatrixFieldMask = TypeTraits<BitVector>::One << MatrixFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(TransformPtr)

    OSG_SFIELD_ACCESSORS(SFMatrix, Matrix, Matrix)

protected:
    TransformBase();
    TransformBase(const TransformBase& source);
    ~TransformBase() override;
};

} // namespace osg

#endif
