#ifndef _OSGATTACHMENTMAPFIELDS_H_
#define _OSGATTACHMENTMAPFIELDS_H_

#include "OSGAttachmentFields.h"

#include <map>

namespace osg {

// Attachments of a container, keyed by (group id << 16) | binding.
typedef std::map<UInt32, AttachmentPtr> AttachmentMap;

// Prints the attachment addresses ("%p", separated by single spaces); no text input.
template <>
struct OSG_SYSTEMLIB_DLLMAPPING FieldDataTraits<AttachmentMap, 0>
{
    typedef AttachmentMap ValueType;
    static DataType& getType();
    static const Char8* getSName() { return "SFAttachmentMap"; }
    static const Char8* getMName() { return "MFAttachmentMap"; }
    static bool getFromString(AttachmentMap&, const Char8*) { return false; }
    static void putToString(const AttachmentMap& in, std::string& out);
};

typedef SField<AttachmentMap> SFAttachmentMap;

} // namespace osg

#endif
