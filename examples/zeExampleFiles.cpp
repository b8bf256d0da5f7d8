// zeExampleFiles: writes the example animation files of this folder, the same bytes on every run.
//
//   zeExampleFiles <folder>     writes <folder>/showcase.xml, large.xml and broken.xml
//
// showcase.xml  the clip "showcase" of zeDemo (a box that slides, turns and turns blue, a camera
//               that zooms, a sun that sets, a host sequence), saved as a host saves it.
// large.xml     a clip of 40 blocks, 240 curves, with a nested clip and sequences.
// broken.xml    a small clip into whose text one of each problem `zeanim check` finds was written
//               by hand, as a faulty exporter or a careless edit would.
//
// Identifiers come from the manager's generator seeded with a fixed number instead of the clock,
// so that the files only change when the library's output does.

#include "zeExampleScene.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeQt4Ext/QZEDomDocumentWriter.h>

#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QString>

#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

using namespace osg;

namespace {

using zeExample::block;
using zeExample::curve;
using zeExample::sequence;

NodePtr child(const NodePtr& parent, const NodeCorePtr& core, const char* name)
{
    NodePtr node = zeExample::makeNode(core, name);
    parent->addChild(node);
    return node;
}

// A scene root for one file; zeExample::releaseScene releases it with the pool.
NodePtr beginScene()
{
    NodePtr root = zeExample::makeNode(Group::create(), "root");
    addRefCP(root);
    zeAnimationManager::setSceneRootNode(root);
    return root;
}

// A node's animation fields are made for every attribute it has; a host's file only keeps those
// its curves use.
void dropUnusedFields()
{
    zeAnimationManager* manager = zeAnimationManager::the();
    for (const auto& entry : manager->getFields()) {
        if (manager->getReferencedCurves(entry.first).empty())
            manager->destroyField(entry.second);
    }
}

bool writeText(const std::string& path, const QString& text)
{
    QFile file(QString::fromStdString(path));
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "zeExampleFiles: cannot write %s\n", path.c_str());
        return false;
    }
    return true;
}

bool save(const std::string& path)
{
    if (!zeAnimationManager::the()->saveAnimations(path.c_str())) {
        std::fprintf(stderr, "zeExampleFiles: cannot write %s\n", path.c_str());
        return false;
    }
    return true;
}

// The scene and clip of zeDemo.
bool writeShowcase(const std::string& path)
{
    SimpleMaterialPtr paint = SimpleMaterial::create();
    MaterialGroupPtr paintGroup = MaterialGroup::create();
    paintGroup->setMaterial(paint);
    NodePtr root = beginScene();
    NodePtr cameraNode = child(root, CameraSetting::create(), "camera");
    NodePtr sunNode = child(root, DirectionalLight::create(), "sun");
    NodePtr paintNode = child(sunNode, paintGroup, "paint");
    NodePtr boxNode = child(paintNode, Transform3D::create(), "box transform");
    child(boxNode, Geometry::create(), "box");

    zeExample::showcaseClip(boxNode, cameraNode, paintNode, sunNode);
    dropUnusedFields();
    const bool saved = save(path);

    zeExample::releaseScene(root);
    return saved;
}

// A small deterministic generator of its own, so that the values do not depend on the C library.
class Numbers
{
public:
    unsigned next(unsigned range)
    {
        state = state * 1103515245u + 12345u;
        return (state >> 16) % range;
    }

private:
    unsigned state = 2024;
};

// 40 dancers, each a block of six curves (translation and rotation), spread over a clip by its
// first free track; the last eight dance in a nested clip "wave". Keys use every tangent type.
bool writeLarge(const std::string& path)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    NodePtr root = beginScene();
    zeAnimationStrip* clip = manager->createStrip("stadium", 0);
    zeAnimationStrip* wave = manager->createStrip("wave", 0);
    const char* attributes[] = {"translationX", "translationY", "translationZ",
                                "rotationX",    "rotationY",    "rotationZ"};
    const zeControlPoint2D::TangentMode types[] = {
        zeControlPoint2D::TangentSmooth, zeControlPoint2D::TangentFlat, zeControlPoint2D::TangentLinear,
        zeControlPoint2D::TangentForward, zeControlPoint2D::TangentNone};
    Numbers numbers;
    for (int dancer = 0; dancer < 40; ++dancer) {
        const std::string name = "dancer " + std::to_string(dancer + 1);
        NodePtr node = child(root, Transform3D::create(), name.c_str());
        zeAnimationUnit* unit = manager->createUnit(name, 0);
        const float start = static_cast<float>(numbers.next(200));
        const float length = 20.0f + static_cast<float>(numbers.next(60));
        for (const char* attribute : attributes) {
            zeAnimationCurve2D* c = manager->createCurve2D(node, attribute);
            const bool rotation = attribute[0] == 'r';
            for (int k = 0; k < 5; ++k) {
                const float x = start + length * static_cast<float>(k) / 4.0f;
                const float y = rotation ? static_cast<float>(numbers.next(360)) - 180.0f
                                         : static_cast<float>(numbers.next(200)) / 20.0f - 5.0f;
                zeControlPoint2D* key = manager->createPoint2D(x, y, 0);
                key->setTangentType(types[numbers.next(5)]);
                c->addObject(key);
            }
            unit->addObject(c);
        }
        if (dancer < 32)
            clip->insertObject(unit);
        else
            wave->insertObject(unit);
    }
    wave->move(240.0f - wave->getBegin(), true);
    clip->insertObject(wave);
    clip->insertObject(sequence("cheer", 120.0f, 130.0f));
    clip->insertObject(sequence("lights out", 300.0f, 310.0f));
    dropUnusedFields();
    const bool saved = save(path);

    zeExample::releaseScene(root);
    return saved;
}

// Elements of a document by their "id".
QDomElement elementById(const QDomDocument& document, osg::UInt64 id)
{
    for (QDomElement e = document.documentElement().firstChildElement(); !e.isNull();
         e = e.nextSiblingElement()) {
        if (e.attribute("id").toULongLong() == id)
            return e;
    }
    return QDomElement();
}

void addChildReference(QDomDocument& document, QDomElement parent, const char* tag, osg::UInt64 id)
{
    QDomElement child = document.createElement(tag);
    child.setAttribute("id", QString::number(id));
    parent.appendChild(child);
}

// A clean little clip, saved, and then given in its text what the library itself would never
// write: every problem is placed on an object of its own so that each finding stands alone.
bool writeBroken(const std::string& path)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    NodePtr root = beginScene();
    NodePtr ball = child(root, Transform3D::create(), "ball");
    NodePtr lamp = child(root, DirectionalLight::create(), "lamp");

    zeAnimationCurve2D* bounce = curve(ball, "translationY", {{0, 0.0f}, {10, 4.0f}, {20, 0.0f}});
    zeAnimationCurve2D* roll = curve(ball, "rotationZ", {{0, 0.0f}, {20, -360.0f}});
    zeAnimationCurve2D* drift = curve(ball, "translationX", {{0, 0.0f}, {20, 6.0f}});
    zeAnimationCurve2D* rollAgain = curve(ball, "rotationZ", {{0, 0.0f}, {20, 360.0f}});
    zeAnimationCurve2D* glow = curve(lamp, "diffuseR", {{0, 0.2f}, {12, 1.0f}, {24, 0.6f}});
    zeAnimationCurve2D* dim = curve(lamp, "diffuseG", {{0, 1.0f}, {12, 0.5f}, {24, 0.2f}});
    zeAnimationCurve2D* flicker = curve(lamp, "diffuseB", {{0, 0.3f}, {6, 0.9f}});
    zeAnimationCurve2D* fade = curve(lamp, "ambientR", {{0, 0.0f}, {30, 1.0f}});
    zeAnimationCurve2D* pulse = curve(lamp, "ambientG", {{0, 0.0f}, {10, 1.0f}});
    zeAnimationCurve2D* stray = curve(lamp, "ambientB", {{0, 0.0f}, {10, 0.5f}});
    zeAnimationStrip* clip = manager->createStrip("broken", 0);
    zeAnimationUnit* ballBlock = block("ball bounces", {bounce, roll, drift, rollAgain});
    zeAnimationUnit* lampBlock = block("lamp glows", {glow, dim, flicker, fade});
    zeAnimationUnit* spare = block("spare", {pulse});
    clip->addObject(ballBlock);
    clip->addObject(lampBlock);
    clip->addObject(spare);
    zeAnimationSequence* bell = sequence("bell", 5.0f, 8.0f);
    clip->addObject(bell);
    dropUnusedFields();
    zeAnimationField* unused = manager->createField(0);
    unused->fcID = roll->getAnimationField()->fcID;
    unused->nodeID = roll->getAnimationField()->nodeID;
    unused->name = "scale";
    unused->attribute = "scaleX";

    QDomDocument document;
    document.setContent(manager->createAnimationXML());
    auto key = [&](zeAnimationCurve2D* c, int index) {
        return elementById(document, c->getPointsAndTangentPoints()[3 * index]->getId());
    };
    // Bounce: the middle key's out-handle reaches past the last key.
    key(bounce, 1).setAttribute("outTangent", "23.000000 2.000000");
    // Glow: the middle key's in-handle runs backwards in time, beyond its own key.
    key(glow, 1).setAttribute("inTangent", "14.000000 1.000000");
    // Dim: its handles sit at exactly a third and two thirds of the segment, where the solve
    // has no root.
    key(dim, 0).setAttribute("outTangent", "4.000000 0.750000");
    key(dim, 1).setAttribute("inTangent", "8.000000 0.750000");
    // Drift: a handle that is not a number.
    key(drift, 1).setAttribute("inTangent", "nan 3.000000");
    // Flicker: its second key moved onto the first.
    key(flicker, 1).setAttribute("position", "0.000000 0.900000");
    // Fade: one key only, the other one left out of its list.
    QDomElement fadeElement = elementById(document, fade->getId());
    fadeElement.removeChild(fadeElement.lastChildElement("point"));
    // Roll and rollAgain drive the same field of the ball: make the second one use the first's.
    elementById(document, rollAgain->getId())
        .setAttribute("field", QString::number(roll->getAnimationField()->getId()));
    // The spare block also lists drift, which already belongs to the ball, and a curve that is
    // not in the file.
    QDomElement spareElement = elementById(document, spare->getId());
    addChildReference(document, spareElement, "block", drift->getId());
    addChildReference(document, spareElement, "block", 4242);
    // The lamp's track lists a curve of no block, which a track cannot hold.
    QDomElement lampTrack = elementById(document, lampBlock->getParentId());
    addChildReference(document, lampTrack, "obj", stray->getId());
    // The bell ends before it begins; the lamp's value is infinite.
    elementById(document, bell->getId()).setAttribute("end", "2");
    elementById(document, glow->getAnimationField()->getId()).setAttribute("value", "inf");
    const bool written = writeText(path, QZEDomDocumentWriter::toString(document));

    zeExample::releaseScene(root);
    return written;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: zeExampleFiles <folder>\n");
        return 2;
    }
    osgInit(0, nullptr);
    zeAnimationManager* manager = zeAnimationManager::the();
    const std::string folder = argv[1];
    manager->random(1);
    bool ok = writeShowcase(folder + "/showcase.xml");
    manager->random(2);
    ok = writeLarge(folder + "/large.xml") && ok;
    manager->random(3);
    ok = writeBroken(folder + "/broken.xml") && ok;
    osgExit();
    return ok ? 0 : 1;
}
