// The peer workload (peerWorkload.h) as this library plays it: a clip whose blocks all run over the
// whole range, so the clip gives each its own track; the curves are bound to the components of the
// block's material and keep the tangents the library computes for their keys. Played globally on
// a simulated clock. Shared by the playback benchmark and the peer benchmark.
#pragma once

#include "peerWorkload.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <OpenSG/OSGSimpleMaterial.h>

#include <vector>

namespace zePeer {

class ZeWorkload
{
public:
    ~ZeWorkload() { release(); }

    // blocks × kChannelsPerBlock curves of `keys` keys, playing from frame 0; false if the clip
    // refused a block or playback did not start.
    bool build(int blocks, int keys)
    {
        zeAnimationManager* manager = zeAnimationManager::the();
        clip = manager->createStrip("clip", 0);
        std::vector<zeControlPoint2D*> points(keys);
        for (int b = 0; b < blocks; ++b) {
            osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
            osg::addRefCP(material);
            materials.push_back(material);
            zeAnimationUnit* unit = manager->createUnit("block", 0);
            for (int c = 0; c < kChannelsPerBlock; ++c) {
                zeAnimationField* field = manager->createField(0);
                field->fcID = osg::getContainerId(material);
                field->name = kComponents[c].field;
                field->attribute = kComponents[c].attribute;
                field->valuePos = kComponents[c].index;
                zeAnimationCurve2D* curve = manager->createCurve2D(field, kComponents[c].attribute, 0, false);
                for (int k = 0; k < keys; ++k)
                    points[k] =
                        manager->createPoint2D(keyFrame(k), keyValue(b * kChannelsPerBlock + c, k), 0);
                curve->setPoints(points);
                unit->addObject(curve);
            }
            if (!clip->insertObject(unit))
                return false;
        }
        zeAnimationController::setSimulationTimeCB(&hostTime);
        seconds = 0.0;
        zeAnimationController::the()->playGlobal(clip->getId(), false, true, 0.0f, keyFrame(keys - 1), 0.0f);
        return zeAnimationController::isPlayingGlobal();
    }

    void release()
    {
        zeAnimationController::the()->stopGlobal();
        zeAnimationController::setSimulationTimeCB(nullptr);
        if (clip)
            zeAnimationManager::the()->destroyObject(clip);
        clip = nullptr;
        zeAnimationManager::the()->destroyAllFields();
        for (osg::SimpleMaterialPtr& material : materials)
            osg::subRefCP(material);
        materials.clear();
    }

    // One frame of the host's loop, with the clock at `frame`.
    void frame(double frame)
    {
        seconds = frame / zeAnimationController::getFPS();
        zeAnimationController::the()->playLoop();
    }

    // The value the material of `channel` shows.
    float value(int channel) const
    {
        const osg::SimpleMaterialPtr& m = materials[channel / kChannelsPerBlock];
        const int c = channel % kChannelsPerBlock;
        if (c < 3)
            return m->getDiffuse().getValuesRGB()[c];
        if (c < 6)
            return m->getAmbient().getValuesRGB()[c - 3];
        if (c < 9)
            return m->getSpecular().getValuesRGB()[c - 6];
        return m->getShininess();
    }

private:
    static double hostTime() { return seconds; }

    static inline double seconds = 0.0;
    zeAnimationStrip* clip = nullptr;
    std::vector<osg::SimpleMaterialPtr> materials;
};

} // namespace zePeer
