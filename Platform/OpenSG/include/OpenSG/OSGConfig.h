#ifndef _OSGCONFIG_H_
#define _OSGCONFIG_H_

// Build configuration of the scene graph: namespace macros, version and platform selection.

#define OSG osg
#define OSG_BEGIN_NAMESPACE namespace osg {
#define OSG_END_NAMESPACE }
#define OSG_USING_NAMESPACE                                                                                  \
    namespace osg {}                                                                                         \
    using namespace osg;

#define OSG_MAJOR_VERSION 1
#define OSG_MINOR_VERSION 8
#define OSG_RELEASE_VERSION 0
#define OSG_VERSION ((OSG_MAJOR_VERSION << 16) | (OSG_MINOR_VERSION << 8) | OSG_RELEASE_VERSION)
#define OSG_VERSION_STRING "1.8.0"

#if defined(__linux__) || defined(__APPLE__) || defined(__unix__)
#define OSG_LINUX_TYPES
#else
#error "unsupported platform: only the Linux type set is provided"
#endif

// Only one aspect exists; kept for code that tests it.
#define OSG_NUM_ASPECTS 1

#define OSG_SYSTEMLIB_DLLMAPPING __attribute__((visibility("default")))

#endif
