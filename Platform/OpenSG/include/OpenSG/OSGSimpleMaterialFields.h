#ifndef _OSGSIMPLEMATERIALFIELDS_H_
#define _OSGSIMPLEMATERIALFIELDS_H_

#include "OSGChunkMaterialFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class SimpleMaterial;
typedef FCPtr<ChunkMaterialPtr, SimpleMaterial> SimpleMaterialPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(SimpleMaterialPtr)

typedef SField<SimpleMaterialPtr> SFSimpleMaterialPtr;
typedef MField<SimpleMaterialPtr> MFSimpleMaterialPtr;

} // namespace osg

#endif
