// zeanim end to end: the built program run on the example files, its output read back and
// compared with what the library itself says about the same files.

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

const QString examples = QStringLiteral(ZE_EXAMPLES_DIR);

struct ToolRun
{
    int exit = -1;
    QString out;
    QString err;
};

ToolRun zeanim(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(ZEANIM), arguments);
    process.waitForFinished(120000);
    return ToolRun{process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                   QString::fromUtf8(process.readAllStandardOutput()),
                   QString::fromUtf8(process.readAllStandardError())};
}

QString example(const char* name)
{
    return examples + "/" + name;
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList lines(const QString& text)
{
    return text.split('\n', Qt::SkipEmptyParts);
}

bool hasLine(const QStringList& text, const char* pattern)
{
    return text.indexOf(QRegularExpression(pattern)) >= 0;
}

class ZeanimTest : public ::testing::Test
{
protected:
    zeAnimationManager* manager = zeAnimationManager::the();
    QTemporaryDir temp;

    void TearDown() override { clearPool(); }

    void clearPool()
    {
        for (const auto& entry : manager->getObjects()) {
            if (zeAnimationObject* object = manager->getObject(entry.first))
                manager->destroyObject(object);
        }
        manager->destroyAllFields();
    }

    void load(const QString& path)
    {
        clearPool();
        ASSERT_TRUE(manager->loadAnimations(path, true)) << manager->getLastFileError().toStdString();
    }

    zeAnimationObject* objectNamed(const std::string& name) const
    {
        for (const auto& entry : manager->getObjects()) {
            if (entry.second->getName() == name)
                return entry.second;
        }
        return nullptr;
    }

    // Runs bake and compares every cell with what the library's playback writes into the curves'
    // own fields when it evaluates `object` at the row's frame: a value, or nothing (empty).
    void expectBakeMatchesPlayback(const QString& file, const QStringList& options,
                                   const std::string& objectName, std::size_t expectedRows)
    {
        const ToolRun run = zeanim(QStringList({"bake", file}) + options);
        ASSERT_EQ(run.exit, 0) << run.err.toStdString();
        const QStringList rows = lines(run.out);
        ASSERT_EQ(static_cast<std::size_t>(rows.size()), expectedRows + 1);
        load(file);
        zeAnimationObject* object = objectNamed(objectName);
        ASSERT_NE(object, nullptr);
        std::vector<zeAnimationCurve2D*> curves;
        const QStringList header = rows[0].split(',');
        ASSERT_EQ(header[0], "frame");
        for (int c = 1; c < header.size(); ++c) {
            // "block/attribute": the curve of that attribute in that block.
            const QStringList parts = header[c].split('/');
            zeAnimationObject* block = objectNamed(parts[0].toStdString());
            ASSERT_NE(block, nullptr) << header[c].toStdString();
            zeAnimationCurve2D* found = nullptr;
            for (zeAnimationCurve2D* curve : block->getCurves()) {
                if (curve->getAnimationField()->attribute == parts[1].toStdString())
                    found = curve;
            }
            ASSERT_NE(found, nullptr) << header[c].toStdString();
            curves.push_back(found);
        }
        int values = 0;
        for (int r = 1; r < rows.size(); ++r) {
            const QStringList cells = rows[r].split(',');
            ASSERT_EQ(cells.size(), header.size());
            const float frame = cells[0].toFloat();
            for (zeAnimationCurve2D* curve : curves)
                curve->getAnimationField()->value = NAN;
            zeAnimationController::the()->evaluateObject(object, frame, false);
            for (std::size_t c = 0; c < curves.size(); ++c) {
                const float expected = curves[c]->getAnimationField()->value;
                const QString& cell = cells[static_cast<int>(c) + 1];
                if (std::isnan(expected)) {
                    EXPECT_TRUE(cell.isEmpty()) << "frame " << frame << " column " << c;
                } else {
                    EXPECT_EQ(cell.toFloat(), expected) << "frame " << frame << " column " << c;
                    ++values;
                }
            }
        }
        EXPECT_GT(values, 0);
    }
};

TEST_F(ZeanimTest, GeneratorRemakesTheExampleFiles)
{
#ifdef ZE_EXAMPLE_GENERATOR
    QProcess generator;
    generator.start(QStringLiteral(ZE_EXAMPLE_GENERATOR), QStringList{temp.path()});
    ASSERT_TRUE(generator.waitForFinished(120000));
    ASSERT_EQ(generator.exitCode(), 0);
    for (const char* name : {"showcase.xml", "large.xml", "broken.xml"})
        EXPECT_EQ(readAll(temp.path() + "/" + name), readAll(example(name)))
            << name << " is out of date: run zeExampleFiles " << examples.toStdString();
#else
    GTEST_SKIP() << "examples are not built";
#endif
}

TEST_F(ZeanimTest, InfoShowsTheTreeAsTextAndJson)
{
    ToolRun run = zeanim({"info", example("showcase.xml")});
    ASSERT_EQ(run.exit, 0) << run.err.toStdString();
    const QStringList text = lines(run.out);
    EXPECT_EQ(text.first(), example("showcase.xml")) << "the library's own lines must not reach the output";
    EXPECT_TRUE(text[1].startsWith("clip ") && text[1].endsWith("\"showcase\": frames 0 to 40"));
    EXPECT_TRUE(hasLine(text, ("^  track \\d+ #0 \"Track\": frames 0 to 30$")));
    EXPECT_TRUE(hasLine(text, ("^    block \\d+ \"camera zooms\": frames 10 to 25$")));
    EXPECT_TRUE(hasLine(text, ("^      curve \\d+ \"focalLength\": field \\d+ \\(container \\d+, "
                               "focalLength, focalLength\\), 2 keys, frames 10 to 25$")));
    EXPECT_TRUE(hasLine(text, ("^    sequence \\d+ \"fireworks\": frames 20 to 20$")));
    EXPECT_EQ(text.last(),
              "counts: 1 clip, 5 tracks, 4 blocks, 1 sequence, 7 curves, 14 keys, 7 fields (0 unused)");

    run = zeanim({"info", example("broken.xml")});
    EXPECT_TRUE(
        run.out.contains(QRegularExpression("objects that belong to nothing\n  curve \\d+ \"ambientB\"")));
    EXPECT_TRUE(run.out.contains(QRegularExpression("\n  key \\d+ at \\(30, 1\\)\n")));
    EXPECT_TRUE(run.out.contains(
        QRegularExpression("fields no curve uses\n  field \\d+ \\(container \\d+, scale, scaleX\\)")));

    // The JSON of the large file against the pool the library loads from it.
    run = zeanim({"info", "--json", example("large.xml")});
    ASSERT_EQ(run.exit, 0) << run.err.toStdString();
    QJsonParseError error;
    const QJsonObject json = QJsonDocument::fromJson(run.out.toUtf8(), &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    load(example("large.xml"));
    std::map<osg::UInt32, int> kinds;
    for (const auto& entry : manager->getObjects())
        ++kinds[entry.second->getTypeID()];
    const QJsonObject counts = json["counts"].toObject();
    EXPECT_EQ(counts["clips"].toInt(), kinds[5]);
    EXPECT_EQ(counts["tracks"].toInt(), kinds[4]);
    EXPECT_EQ(counts["blocks"].toInt(), kinds[3]);
    EXPECT_EQ(counts["curves"].toInt(), kinds[2]);
    EXPECT_EQ(counts["keys"].toInt(), kinds[1]);
    EXPECT_EQ(counts["fields"].toInt(), static_cast<int>(manager->getFieldCount()));
    int curvesInTree = 0;
    std::function<void(const QJsonObject&)> walk = [&](const QJsonObject& node) {
        if (node["kind"] == "curve") {
            ++curvesInTree;
            const zeAnimationCurve2D* curve = manager->getCurve2D(node["id"].toString().toULongLong());
            ASSERT_NE(curve, nullptr);
            EXPECT_EQ(node["keys"].toInt(), static_cast<int>(curve->getPointCount()));
            EXPECT_EQ(node["field"].toObject()["attribute"].toString().toStdString(),
                      curve->getAnimationField()->attribute);
        }
        for (const QJsonValue child : node["children"].toArray())
            walk(child.toObject());
    };
    ASSERT_EQ(json["clips"].toArray().size(), 1);
    walk(json["clips"].toArray()[0].toObject());
    EXPECT_EQ(curvesInTree, kinds[2]);
    EXPECT_TRUE(json["unplaced"].toArray().isEmpty());
}

TEST_F(ZeanimTest, CheckReportsEveryProblemWhereItStands)
{
    for (const char* clean : {"showcase.xml", "large.xml"}) {
        const ToolRun run = zeanim({"check", example(clean)});
        EXPECT_EQ(run.exit, 0) << clean;
        EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
        EXPECT_EQ(run.err, example(clean) + ": no findings\n");
    }

    const ToolRun run = zeanim({"check", example("broken.xml")});
    EXPECT_EQ(run.exit, 1);
    const std::vector<std::pair<QString, QString>> expected = {
        {"error", "value is \"inf\": NaN or infinite number"},
        {"error", "inTangent is \"nan 3.000000\": NaN or infinite number"},
        {"error", "out-handle of the key at frame 10 reaches frame 23, beyond the next key at frame 20"},
        {"error", "in-handle of the key at frame 12 runs forwards in time, to frame 14"},
        {"error", "yields no value at 11 of 11 frames tried between the keys at frames 0 and 12"},
        {"error", "share frame 0; the loader keeps the last listed"},
        {"error", "which names nothing in the file"},
        {"error", "already holds; it stays there"},
        {"error", "both drive rotationZ of container"},
        {"error", "ends at frame 2, before it begins at frame 5"},
        {"error", "\"ambientB\"; a track holds blocks, clips and sequences"},
        {"warning", "\"diffuseB\": has 1 key once loaded"},
        {"warning", "\"ambientR\": has 1 key once loaded"},
        {"warning", "\"key\": belongs to no curve"},
        {"note", "\"scaleX\": no curve uses this field"}};
    const QStringList findings = lines(run.out);
    EXPECT_EQ(findings.size(), static_cast<int>(expected.size())) << run.out.toStdString();
    for (const auto& e : expected) {
        const QStringList matching = findings.filter(e.second);
        ASSERT_EQ(matching.size(), 1) << e.second.toStdString();
        EXPECT_TRUE(matching[0].startsWith(e.first + " ")) << matching[0].toStdString();
    }
    EXPECT_EQ(run.err, example("broken.xml") + ": 11 errors, 3 warnings, 1 note\n");
    // Every line is "severity id "name": what (file:line:column)", and its place is a tag.
    const QStringList text = QString::fromUtf8(readAll(example("broken.xml"))).split('\n');
    const QRegularExpression form("^(error|warning|note) \\d+ \"[^\"]*\": .+ \\((.+):(\\d+):(\\d+)\\)$");
    for (const QString& finding : findings) {
        const QRegularExpressionMatch m = form.match(finding);
        ASSERT_TRUE(m.hasMatch()) << finding.toStdString();
        EXPECT_EQ(m.captured(2), example("broken.xml"));
        EXPECT_EQ(text.value(m.captured(3).toInt() - 1).mid(m.captured(4).toInt() - 1, 1), "<")
            << finding.toStdString();
    }

    // A compact text: a loop, a child listed twice, a bad flag, a reused id, an element of no type.
    const QString compact =
        "<AnimationPool objects=\"5\"><clip typeID=\"5\" id=\"1\" name=\"a\"><track id=\"2\"/></clip>"
        "<track typeID=\"4\" id=\"2\" name=\"t\"><obj id=\"1\"/><obj id=\"3\"/><obj id=\"3\"/></track>"
        "<block typeID=\"3\" id=\"3\" name=\"b\" active=\"2\"/><block typeID=\"3\" id=\"3\"/>"
        "<thing id=\"9\"/></AnimationPool>\n";
    const QString path = temp.path() + "/compact.xml";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(compact.toUtf8());
    file.close();
    const QStringList found = lines(zeanim({"check", path}).out);
    const auto at = [&](const QString& what) {
        return QString(" (%1:1:%2)").arg(path).arg(compact.indexOf(what) + 1);
    };
    EXPECT_EQ(found, QStringList(
                         {"error 2 \"t\": lists the clip 1 \"a\", which holds it: the loop is left out" +
                              at("<obj id=\"1\"/>"),
                          "warning 2 \"t\": lists 3 twice" + at("<obj id=\"3\"/></track>"),
                          "error 3 \"b\": active is \"2\": a flag is 0 or 1; the loader ignores it" +
                              at("<block typeID=\"3\" id=\"3\" name"),
                          "error 3 \"\": id already used by the block at line 1; the loader gives this block "
                          "a fresh id and references reach the first" +
                              at("<block typeID=\"3\" id=\"3\"/>"),
                          "warning - \"\": <thing> without a usable typeID makes nothing" + at("<thing")}));
}

TEST_F(ZeanimTest, BakeWritesWhatPlaybackEvaluates)
{
    // Every curve of the showcase, at half frames beyond both ends.
    expectBakeMatchesPlayback(example("showcase.xml"), {"--step", "0.5", "--from", "-2", "--to", "42"},
                              "showcase", 89);

    // Active flags and repetition: one block plays, one is switched off, one repeats.
    clearPool();
    zeAnimationStrip* clip = manager->createStrip("flags", 0);
    const char* names[] = {"plays", "off", "loops"};
    for (int i = 0; i < 3; ++i) {
        zeAnimationField* field = manager->createField(0);
        field->name = "translation";
        field->attribute = "translationX";
        zeAnimationCurve2D* curve = manager->createCurve2D(field, "x", 0, false);
        curve->addObject(manager->createPoint2D(0.0f, 1.0f + i));
        curve->addObject(manager->createPoint2D(4.0f + 4.0f * i, 9.0f - i));
        zeAnimationUnit* block = manager->createUnit(names[i], 0);
        block->addObject(curve);
        clip->addObject(block);
    }
    static_cast<zeAnimationUnit*>(objectNamed("off"))->setActive(false);
    static_cast<zeAnimationUnit*>(objectNamed("loops"))->setRepeating(true);
    const osg::UInt64 clipId = clip->getId();
    const QString flags = temp.path() + "/flags.xml";
    ASSERT_TRUE(manager->saveAnimations(flags.toUtf8().constData()));
    clearPool();
    expectBakeMatchesPlayback(flags, {"--clip", QString::number(clipId), "--step", "0.25"}, "flags", 49);
}

TEST_F(ZeanimTest, PlotDrawsCurvesThatRender)
{
    const QString svg = temp.path() + "/showcase.svg";
    ToolRun run = zeanim({"plot", example("showcase.xml"), "-o", svg});
    ASSERT_EQ(run.exit, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.isEmpty());

    // The picture is well-formed XML with one path per curve, one dot per key, handles with end
    // markers, range bands and a legend, in the library's curve colours.
    load(example("showcase.xml"));
    std::set<QString> curveColours;
    for (const auto& entry : manager->getObjects()) {
        if (entry.second->getTypeID() != 2)
            continue;
        const osg::Color3f c =
            zeAnimationUtils::getDefaultCurveColor(manager->getCurve2D(entry.first)->getAnimationField());
        curveColours.insert(QString::asprintf("#%02x%02x%02x", int(std::lround(c[0] * 255)),
                                              int(std::lround(c[1] * 255)), int(std::lround(c[2] * 255))));
    }
    QFile file(svg);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    std::map<QString, int> elements;
    std::set<QString> pathColours;
    QStringList texts;
    int handles = 0;
    bool inHandles = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == "g")
            inHandles = false;
        if (token != QXmlStreamReader::StartElement)
            continue;
        ++elements[xml.name().toString()];
        if (xml.name() == "g")
            inHandles = xml.attributes().hasAttribute("marker-end");
        handles += inHandles && xml.name() == "line";
        if (xml.name() == "path")
            pathColours.insert(xml.attributes().value("stroke").toString());
        if (xml.name() == "text")
            texts << xml.readElementText();
    }
    ASSERT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(elements["path"], 7);
    EXPECT_EQ(elements["circle"], 14);
    EXPECT_EQ(handles, 28) << "each key has two handles";
    EXPECT_GE(elements["marker"], 1);
    EXPECT_EQ(pathColours, curveColours);
    for (const char* label : {"translationX (box slides and turns)", "focalLength (camera zooms)", "showcase",
                              "sun sets", "frame"})
        EXPECT_TRUE(texts.contains(label)) << label;

    // Rendered by a browser-grade renderer: the picture is readable and has its size.
    const QString png = temp.path() + "/showcase.png";
    ASSERT_EQ(QProcess::execute(QStringLiteral(RSVG_CONVERT), {"-o", png, svg}), 0);
    QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), 960);

    // One curve over a chosen range.
    const osg::UInt64 focal = objectNamed("focalLength")->getId();
    run = zeanim(
        {"plot", example("showcase.xml"), "--curve", QString::number(focal), "--from", "5", "--to", "20"});
    ASSERT_EQ(run.exit, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.count("<path "), 1);
    EXPECT_TRUE(run.out.contains("1 curve of curve &quot;focalLength&quot;, frames 5 to 20"));
}

TEST_F(ZeanimTest, CommandsFailWithOneLineAndHelpEverywhere)
{
    const QString invalid = temp.path() + "/invalid.xml";
    QFile file(invalid);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<AnimationPool><field typeID=\"-1\" id=\"1\"></AnimationPool>\n");
    file.close();
    const std::vector<std::pair<QStringList, QString>> failures = {
        {{"info", temp.path() + "/missing.xml"}, "cannot open the file"},
        {{"check", invalid}, "line 1, column"},
        {{"bake", example("showcase.xml"), "--block", "12"}, "no block has the id 12"},
        {{"plot", example("showcase.xml"), "--step", "2"}, "\"--step\" is not an option of plot"},
        {{"bake", example("showcase.xml"), "--from", "3", "--to", "1"}, "--from 3 lies after --to 1"},
        {{"frobnicate"}, "unknown command"},
        {{"plot", example("showcase.xml"), "-o", temp.path() + "/no/such/folder.svg"}, "cannot write"}};
    for (const auto& failure : failures) {
        const ToolRun run = zeanim(failure.first);
        EXPECT_EQ(run.exit, 2) << failure.first.join(' ').toStdString();
        EXPECT_TRUE(run.out.isEmpty());
        EXPECT_TRUE(run.err.startsWith("zeanim: ") && run.err.count('\n') == 1 &&
                    run.err.contains(failure.second))
            << run.err.toStdString();
    }
    for (const char* command : {"info", "check", "plot", "bake"}) {
        const ToolRun run = zeanim({command, "--help"});
        EXPECT_EQ(run.exit, 0);
        EXPECT_TRUE(run.out.startsWith(QString("usage: zeanim ") + command)) << run.out.toStdString();
    }
    EXPECT_EQ(zeanim({"--version"}).out, QString("zeanim %1\n").arg(ZE_VERSION));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    osg::osgInit(0, nullptr);
    const int result = RUN_ALL_TESTS();
    osg::osgExit();
    return result;
}
