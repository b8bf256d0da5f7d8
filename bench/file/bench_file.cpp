// The animation file at the size of a long editing session: 1,000 curves of 1,000 keys each
// (1,000,000 keys) in 100 blocks on 10 tracks of one clip, saved and loaded through the streamed
// path (saveAnimations / loadAnimations) and through the DOM path (createAnimationXML written out /
// QDomDocument handed to the loader). Each figure comes with the memory the operation needed:
// "peak_MB" is the highest resident memory during the operation above what was resident before
// it, "transient_MB" the part of it that was given back afterwards (for a load, the peak less the
// pool it leaves behind).
#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <QDomDocument>
#include <QFile>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace {

const int kCurves = 1000;
const int kKeys = 1000;
const int kCurvesPerBlock = 10;
const int kBlocksPerTrack = 10;

zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

std::string filePath()
{
    return "/tmp/zeAnimation-bench-file-" + std::to_string(getpid()) + ".xml";
}

// Resident memory in MiB: "VmRSS" now, or "VmHWM" (the peak since the last reset).
double residentMB(const char* key)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    const std::size_t length = std::strlen(key);
    while (std::getline(status, line)) {
        if (line.compare(0, length, key) == 0)
            return std::stod(line.substr(length + 1)) / 1024.0;
    }
    return 0.0;
}

// Starts a measurement: memory freed before is handed back to the system and the peak is reset to
// what is resident now.
double startMemory()
{
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    return residentMB("VmRSS:");
}

// Memory resident after an operation, once what it freed has gone back to the system.
double afterMemory()
{
    malloc_trim(0);
    return residentMB("VmRSS:");
}

void reportMemory(benchmark::State& state, double before, double peak, double after)
{
    state.counters["peak_MB"] = peak - before;
    state.counters["transient_MB"] = peak - after;
}

// The library prints a line per save and load; while one runs, standard output goes nowhere, so
// that the benchmark's table stays readable.
class QuietOutput
{
public:
    QuietOutput() : saved(dup(1))
    {
        std::fflush(stdout);
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, 1);
        close(null);
    }
    ~QuietOutput()
    {
        std::fflush(stdout);
        dup2(saved, 1);
        close(saved);
    }

private:
    int saved;
};

void clearPool()
{
    zeAnimationManager* m = manager();
    for (const auto& entry : m->getObjects()) {
        if (zeAnimationObject* object = m->getObject(entry.first))
            m->destroyObject(object);
    }
    m->destroyAllFields();
}

void buildPool()
{
    zeAnimationManager* m = manager();
    m->random(2026);
    zeAnimationStrip* clip = m->createStrip("session", 0);
    zeAnimationStreak* track = nullptr;
    zeAnimationUnit* block = nullptr;
    for (int c = 0; c < kCurves; ++c) {
        zeAnimationField* field = m->createField(0);
        field->attribute = c % 3 == 0 ? "translationX" : c % 3 == 1 ? "translationY" : "translationZ";
        field->name = "translation";
        field->fcID = 1000 + c / 3;
        std::vector<zeControlPoint2D*> keys;
        keys.reserve(kKeys);
        for (int k = 0; k < kKeys; ++k) {
            zeControlPoint2D* key =
                m->createPoint2D(k * 0.5f, static_cast<float>((k * 37 + c) % 101) * 0.25f, 0);
            key->setInTangent(osg::Vec2f(k * 0.5f - 0.125f, key->getY() - 0.5f));
            key->setOutTangent(osg::Vec2f(k * 0.5f + 0.125f, key->getY() + 0.5f));
            keys.push_back(key);
        }
        zeAnimationCurve2D* curve = m->createCurve2D(field, "curve" + std::to_string(c), 0, false);
        curve->setPoints(keys);
        if (c % kCurvesPerBlock == 0) {
            if ((c / kCurvesPerBlock) % kBlocksPerTrack == 0) {
                track = m->createStreak("track", 0);
                clip->addObject(track);
            }
            block = m->createUnit("block" + std::to_string(c / kCurvesPerBlock), 0);
            track->addObject(block);
        }
        block->addObject(curve);
    }
}

std::size_t expectedObjects()
{
    const int blocks = kCurves / kCurvesPerBlock;
    return static_cast<std::size_t>(kCurves) * kKeys + kCurves + blocks + blocks / kBlocksPerTrack + 1;
}

// Every curve evaluated between two keys, weighted by its place in identifier order: a pool
// loaded from the file gives what the saved pool gave, to the bit.
double curveValues()
{
    double sum = 0.0;
    double weight = 1.0;
    for (const auto& entry : manager()->getObjects()) {
        zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(entry.second);
        float value = 0.0f;
        if (curve && zeAnimationController::computeCurveValue(curve, 123.3f, value))
            sum += weight++ * value;
    }
    return sum;
}

double savedValues = 0.0;

bool loadedIsSaved()
{
    return manager()->getObjectCount() == expectedObjects() && manager()->getFieldCount() == kCurves &&
           curveValues() == savedValues;
}

void BM_SaveStreamed(benchmark::State& state)
{
    clearPool();
    buildPool();
    savedValues = curveValues();
    const std::string path = filePath();
    for (auto _ : state) {
        const double before = startMemory();
        QuietOutput quiet;
        const bool saved = manager()->saveAnimations(path.c_str());
        reportMemory(state, before, residentMB("VmHWM:"), afterMemory());
        if (!saved) {
            state.SkipWithError("save failed");
            break;
        }
    }
}

void BM_SaveDom(benchmark::State& state)
{
    const std::string path = filePath();
    for (auto _ : state) {
        const double before = startMemory();
        double peak = 0.0;
        qint64 written = 0;
        {
            QuietOutput quiet;
            const QByteArray text = manager()->createAnimationXML().toUtf8();
            QFile file(QString::fromStdString(path + ".dom"));
            if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
                written = file.write(text);
            peak = residentMB("VmHWM:");
        }
        reportMemory(state, before, peak, afterMemory());
        state.PauseTiming();
        if (written != QFile(QString::fromStdString(path)).size()) {
            state.SkipWithError("the two paths wrote different texts");
            break;
        }
        state.ResumeTiming();
    }
    std::remove((path + ".dom").c_str());
}

void BM_LoadStreamed(benchmark::State& state)
{
    const QString path = QString::fromStdString(filePath());
    for (auto _ : state) {
        state.PauseTiming();
        clearPool();
        state.ResumeTiming();
        const double before = startMemory();
        QuietOutput quiet;
        const bool loaded = manager()->loadAnimations(path, true);
        reportMemory(state, before, residentMB("VmHWM:"), afterMemory());
        state.PauseTiming();
        if (!loaded || !loadedIsSaved()) {
            state.SkipWithError(loaded ? "the loaded pool is not the saved one" : "load failed");
            break;
        }
        state.ResumeTiming();
    }
}

void BM_LoadDom(benchmark::State& state)
{
    const QString path = QString::fromStdString(filePath());
    for (auto _ : state) {
        state.PauseTiming();
        clearPool();
        state.ResumeTiming();
        const double before = startMemory();
        double peak = 0.0;
        bool loaded = false;
        {
            QuietOutput quiet;
            QDomDocument document;
            QFile file(path);
            loaded = file.open(QIODevice::ReadOnly) && document.setContent(&file) &&
                     manager()->loadAnimations(document);
            peak = residentMB("VmHWM:");
        }
        reportMemory(state, before, peak, afterMemory());
        state.PauseTiming();
        if (!loaded || !loadedIsSaved()) {
            state.SkipWithError(loaded ? "the loaded pool is not the saved one" : "load failed");
            break;
        }
        state.ResumeTiming();
    }
    std::remove(filePath().c_str());
}

BENCHMARK(BM_SaveStreamed)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_SaveDom)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_LoadStreamed)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_LoadDom)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv)
{
    osg::osgInit(0, nullptr);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    // The saved file (228 MB) goes whichever benchmarks the filter ran.
    std::remove(filePath().c_str());
    osg::osgExit();
    return 0;
}
