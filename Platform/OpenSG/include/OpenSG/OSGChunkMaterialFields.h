#ifndef _OSGCHUNKMATERIALFIELDS_H_
#define _OSGCHUNKMATERIALFIELDS_H_

#include "OSGMField.h"
#include "OSGMaterialFields.h"
#include "OSGSField.h"

namespace osg {

class ChunkMaterial;
typedef FCPtr<MaterialPtr, ChunkMaterial> ChunkMaterialPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(ChunkMaterialPtr)

typedef SField<ChunkMaterialPtr> SFChunkMaterialPtr;
typedef MField<ChunkMaterialPtr> MFChunkMaterialPtr;

} // namespace osg

#endif
