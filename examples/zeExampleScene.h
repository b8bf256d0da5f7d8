#ifndef ZEEXAMPLESCENE_H
#define ZEEXAMPLESCENE_H

// What the example programs build alike: scene nodes, curves through given keys, blocks, and the
// clip "showcase" that zeDemo plays and zeExampleFiles saves.

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <cstdio>
#include <initializer_list>
#include <utility>

namespace zeExample {

inline osg::NodePtr makeNode(const osg::NodeCorePtr& core, const char* name)
{
    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    osg::setName(node, name);
    return node;
}

// A curve on one animatable attribute of a node, through the given (frame, value) keys.
inline zeAnimationCurve2D* curve(const osg::NodePtr& node, const char* attribute,
                                 std::initializer_list<std::pair<float, float>> keys)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    zeAnimationCurve2D* c = manager->createCurve2D(node, attribute);
    if (!c) {
        std::printf("no attribute %s on %s\n", attribute, osg::getName(node));
        return nullptr;
    }
    for (const std::pair<float, float>& key : keys)
        c->addObject(manager->createPoint2D(key.first, key.second, 0));
    return c;
}

inline zeAnimationUnit* block(const char* name, std::initializer_list<zeAnimationCurve2D*> curves)
{
    zeAnimationUnit* unit = zeAnimationManager::the()->createUnit(name, 0);
    for (zeAnimationCurve2D* c : curves)
        unit->addObject(c);
    return unit;
}

inline zeAnimationSequence* sequence(const char* name, float begin, float end)
{
    zeAnimationSequence* s = zeAnimationManager::the()->createSequence(name, 0);
    s->setBegin(begin);
    s->setEnd(end);
    return s;
}

// The clip "showcase", frames 0 to 40, one track per block: it moves and turns the box, zooms the
// camera, repaints the box, dims the sun, and holds a host sequence "fireworks" at frame 20.
inline zeAnimationStrip* showcaseClip(const osg::NodePtr& box, const osg::NodePtr& camera,
                                      const osg::NodePtr& paint, const osg::NodePtr& sun)
{
    zeAnimationStrip* clip = zeAnimationManager::the()->createStrip("showcase", 0);
    clip->addObject(block("box slides and turns", {curve(box, "translationX", {{0, 0.0f}, {30, 3.0f}}),
                                                   curve(box, "rotationY", {{0, 0.0f}, {30, 90.0f}})}));
    clip->addObject(block("camera zooms", {curve(camera, "focalLength", {{10, 35.0f}, {25, 85.0f}})}));
    clip->addObject(block("box turns blue", {curve(paint, "diffuseR", {{15, 0.8f}, {35, 0.1f}}),
                                             curve(paint, "diffuseB", {{15, 0.1f}, {35, 0.8f}})}));
    clip->addObject(block("sun sets", {curve(sun, "diffuseG", {{25, 0.9f}, {40, 0.4f}}),
                                       curve(sun, "diffuseB", {{25, 0.7f}, {40, 0.2f}})}));
    clip->addObject(sequence("fireworks", 20.0f, 20.0f));
    return clip;
}

// Destroys every object and field, and lets go of the scene.
inline void releaseScene(osg::NodePtr root)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    for (const auto& entry : manager->getObjects()) {
        if (zeAnimationObject* object = manager->getObject(entry.first))
            manager->destroyObject(object);
    }
    manager->destroyAllFields();
    zeAnimationManager::setSceneRootNode(osg::NullFC);
    osg::subRefCP(root);
}

} // namespace zeExample

#endif // ZEEXAMPLESCENE_H
