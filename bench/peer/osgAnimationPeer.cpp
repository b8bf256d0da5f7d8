// The osgAnimation side of the peer benchmark: one Animation of ten cubic Bezier float channels per
// block, each block driving one osg::Material through an update callback, as osgAnimation's own
// UpdateMaterial does for a diffuse colour. A frame is one update traversal from the root, which
// runs the animation manager (sampling every channel into its target) and then every material's
// callback (applying the targets), as a viewer's update traversal does.
#include "peerWorkload.h"

#include <osg/FrameStamp>
#include <osg/Group>
#include <osg/Material>
#include <osgAnimation/AnimationUpdateCallback>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/Channel>
#include <osgUtil/UpdateVisitor>

#include <vector>

namespace {

class MaterialCallback : public osgAnimation::AnimationUpdateCallback<osg::StateAttributeCallback>
{
public:
    MaterialCallback()
    {
        for (osg::ref_ptr<osgAnimation::FloatTarget>& target : targets)
            target = new osgAnimation::FloatTarget;
    }

    // A channel named after a component drives that component's target.
    bool link(osgAnimation::Channel* channel) override
    {
        for (int c = 0; c < zePeer::kChannelsPerBlock; ++c) {
            if (channel->getName() == zePeer::kComponents[c].attribute)
                return channel->setTarget(targets[c].get());
        }
        return false;
    }

    void operator()(osg::StateAttribute* attribute, osg::NodeVisitor*) override
    {
        osg::Material* material = dynamic_cast<osg::Material*>(attribute);
        if (!material)
            return;
        const osg::Material::Face face = osg::Material::FRONT_AND_BACK;
        material->setDiffuse(face, osg::Vec4(value(0), value(1), value(2), 1.0f));
        material->setAmbient(face, osg::Vec4(value(3), value(4), value(5), 1.0f));
        material->setSpecular(face, osg::Vec4(value(6), value(7), value(8), 1.0f));
        material->setShininess(face, value(9));
    }

private:
    float value(int c) const { return targets[c]->getValue(); }

    osg::ref_ptr<osgAnimation::FloatTarget> targets[zePeer::kChannelsPerBlock];
};

struct Workload
{
    osg::ref_ptr<osg::Group> root = new osg::Group;
    osg::ref_ptr<osgAnimation::BasicAnimationManager> manager = new osgAnimation::BasicAnimationManager;
    osg::ref_ptr<osgUtil::UpdateVisitor> visitor = new osgUtil::UpdateVisitor;
    osg::ref_ptr<osg::FrameStamp> stamp = new osg::FrameStamp;
    std::vector<osg::ref_ptr<osg::Material>> materials;
    double fps = 25.0;
};

// Keys at the same frames and with the same values as the other side's; the handles are flat
// (each inner control point at the value of its segment's end next to it).
osgAnimation::FloatCubicBezierChannel* makeChannel(int channel, int keys, double fps)
{
    osgAnimation::FloatCubicBezierChannel* result = new osgAnimation::FloatCubicBezierChannel;
    result->setName(zePeer::kComponents[channel % zePeer::kChannelsPerBlock].attribute);
    osgAnimation::FloatCubicBezierKeyframeContainer* container =
        result->getOrCreateSampler()->getOrCreateKeyframeContainer();
    container->reserve(keys);
    for (int k = 0; k < keys; ++k) {
        const float value = zePeer::keyValue(channel, k);
        const float next = k + 1 < keys ? zePeer::keyValue(channel, k + 1) : value;
        container->push_back(osgAnimation::FloatCubicBezierKeyframe(
            zePeer::keyFrame(k) / fps, osgAnimation::FloatCubicBezier(value, value, next)));
    }
    return result;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* zePeerCreate(int blocks, int keys, double fps)
{
    if (blocks <= 0 || keys < 2 || !(fps > 0.0))
        return nullptr;
    Workload* w = new Workload;
    w->fps = fps;
    // Channels are linked to their callbacks here, by hand: the manager's automatic link visitor
    // matches every callback against every animation, quadratic in the number of blocks.
    w->manager->setAutomaticLink(false);
    w->root->setUpdateCallback(w->manager.get());
    for (int b = 0; b < blocks; ++b) {
        osg::ref_ptr<MaterialCallback> callback = new MaterialCallback;
        osg::ref_ptr<osgAnimation::Animation> animation = new osgAnimation::Animation;
        animation->setPlayMode(osgAnimation::Animation::LOOP);
        for (int c = 0; c < zePeer::kChannelsPerBlock; ++c) {
            osgAnimation::FloatCubicBezierChannel* channel =
                makeChannel(b * zePeer::kChannelsPerBlock + c, keys, fps);
            animation->addChannel(channel);
            callback->link(channel);
        }
        w->manager->getAnimationList().push_back(animation);

        osg::ref_ptr<osg::Material> material = new osg::Material;
        material->setUpdateCallback(callback.get());
        osg::ref_ptr<osg::Node> node = new osg::Node;
        node->getOrCreateStateSet()->setAttribute(material.get());
        w->root->addChild(node.get());
        w->materials.push_back(material);
    }
    w->manager->buildTargetReference();
    for (const osg::ref_ptr<osgAnimation::Animation>& animation : w->manager->getAnimationList())
        w->manager->playAnimation(animation.get());
    w->visitor->setFrameStamp(w->stamp.get());
    return w;
}

__attribute__((visibility("default"))) void zePeerFrame(void* workload, double frame)
{
    Workload* w = static_cast<Workload*>(workload);
    w->stamp->setFrameNumber(w->stamp->getFrameNumber() + 1);
    w->stamp->setSimulationTime(frame / w->fps);
    w->visitor->setTraversalNumber(w->stamp->getFrameNumber());
    w->root->accept(*w->visitor);
}

__attribute__((visibility("default"))) float zePeerValue(void* workload, int channel)
{
    const Workload* w = static_cast<const Workload*>(workload);
    const int block = channel / zePeer::kChannelsPerBlock;
    const int c = channel % zePeer::kChannelsPerBlock;
    if (channel < 0 || block >= static_cast<int>(w->materials.size()))
        return -1.0f;
    const osg::Material& m = *w->materials[block];
    const osg::Material::Face face = osg::Material::FRONT;
    if (c < 3)
        return m.getDiffuse(face)[c];
    if (c < 6)
        return m.getAmbient(face)[c - 3];
    if (c < 9)
        return m.getSpecular(face)[c - 6];
    return m.getShininess(face);
}

__attribute__((visibility("default"))) void zePeerDestroy(void* workload)
{
    delete static_cast<Workload*>(workload);
}
}
