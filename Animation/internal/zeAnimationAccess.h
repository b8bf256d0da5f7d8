#ifndef ZEANIMATIONACCESS_H
#define ZEANIMATIONACCESS_H

// The library's internal code (the file loader) builds and links objects in bulk, which the
// public operations do one by one with every update on the way, and the editing indexes kept
// beside the objects read and keep their child lists. This type is their one way to those
// protected parts. It is the manager's nested `Internal`, which the public header only declares:
// as a member of the class every object class befriends, it reaches what the manager reaches,
// so no public header names an internal class, and the steps it exposes are listed here in one
// place.
//
// Internal to the library, never installed.

#include "zeAnimationIdIndex.h"
#include "zeAnimationRevision.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <cstddef>
#include <vector>

struct zeAnimationManager::Internal
{
    // Links a child as the last entry of the parent's child list and does nothing else; once a
    // subtree is linked, finishAppends brings the summaries, the order and the bounds up to date.
    static void appendQuietly(zeAnimationObject* parent, zeAnimationObject* child)
    {
        parent->appendQuietly(child);
    }
    static void finishAppends(zeAnimationObject* object) { object->finishAppends(); }
    // Whether `child`, linked below `parent`, keeps the hierarchy a tree no deeper than MaxDepth.
    static bool canAdopt(const zeAnimationObject* parent, const zeAnimationObject* child)
    {
        return parent->canAdopt(child);
    }

    // Hands a curve all its keys at once, handles as given; without `propagate` only the curve
    // itself is updated, not its ancestors.
    static void assignKeys(zeAnimationCurve2D* curve, const std::vector<zeControlPoint2D*>& keys,
                           bool propagate)
    {
        curve->assignKeys(keys, propagate);
    }

    // Binds a curve to a field identifier the pool may not hold (yet), keeping what a file said.
    static void bindFieldId(zeAnimationCurve2D* curve, osg::UInt64 fieldId)
    {
        curve->fieldId = fieldId;
        zeAnimationRevision::bump();
    }

    static osg::UInt32 parentNodeId(const zeAnimationUnit* unit) { return unit->parentNodeId; }
    static void setParentNodeId(zeAnimationUnit* unit, osg::UInt32 nodeId) { unit->parentNodeId = nodeId; }

    // An object's editing-time indexes (Animation/internal/zeEditIndex.h), made on first use,
    // and the child list they index.
    static zeEditIndex*& editIndex(const zeAnimationObject* object) { return object->editIndex; }
    static zeAnimationObject::ChildList& childList(zeAnimationObject* object) { return object->childIds; }

    // The manager's registries, read in place (copying a million entries is not cheap).
    static const zeAnimationManager::ObjectMap& objects() { return zeAnimationManager::the()->_objects; }
    static const zeAnimationManager::FieldMap& fields() { return zeAnimationManager::the()->_fields; }

    // Makes room in the registry's index for `more` objects beyond those it holds.
    static void reserveObjects(zeAnimationManager* manager, std::size_t more)
    {
        manager->_objectIndex->reserve(manager->_objects.size() + more);
    }
};

using zeAnimationAccess = zeAnimationManager::Internal;

#endif // ZEANIMATIONACCESS_H
