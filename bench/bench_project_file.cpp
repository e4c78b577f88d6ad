// Saving and loading a project of 32,768 polygons, the most that LastPoly can count, each with
// full curves at the default settings: 301 VDYP rows with their species mix and 36 TIPSY rows,
// about 240 MB on disk.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <string>

#include "frame/host.hpp"
#include "model/project_file.hpp"

namespace {

using namespace arborex;

constexpr int kPolygons = 32768;

// A prompt that always takes the default button and never chooses a file.
class DefaultPrompt final : public Prompt {
public:
    Answer ask(const std::string&, const std::string&, Buttons, Answer defaultAnswer,
               Icon) override {
        return defaultAnswer;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string& proposed) override {
        return proposed;
    }
    std::optional<FileChoice> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> saveFile(const FileRequest&) override { return std::nullopt; }
};

struct QuietHost {
    DefaultPrompt prompt;
    SilentStatus status;
    MemorySettings settings;
    HostViews views;
    ProcessEnvironment system;
    Host host{prompt, status, settings, views, system};
};

class Folder {
public:
    Folder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "arborex-bench-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
        path_ = pattern;
    }
    ~Folder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

int16_t i2(int value) {
    return static_cast<int16_t>(value % 32000);
}

// Curves that rise with age and differ from polygon to polygon, so that no row is a copy of
// its neighbour.
Model largeProject() {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    ResizePolygonArrays(m, kPolygons);
    m.LastPoly = static_cast<int16_t>(kPolygons - 1);
    for (int p = 0; p < kPolygons; ++p) {
        const auto i = static_cast<std::size_t>(p);
        m.Poly[i].NAME = "093G" + std::to_string(p);
        m.Poly[i].AREA = 1.5f + static_cast<float>(p % 97);
        m.Poly[i].AGE = i2(p % 250);
        m.Poly[i].VS[0] = "FD";
        m.Poly[i].VP[0] = 100;
        m.Poly[i].MGNT = {0, 1};
        m.Poly[i].YIELDSTATE = {3, 3};
        m.PolyC[i].SORT = i2(p);
        m.PolyC[i].VX.fill(1);
        m.PolyM[i].TUTILIZ = 12.5f;
        m.HarvAge[i][0].HarvestAge = i2(60 + p % 40);
        m.HarvAge[i][1].HarvestAge = i2(50 + p % 30);
        for (int r = 0; r < m.VYield.rowCount(); ++r) {
            m.VYield(p, r) = {i2(r * 3 + p % 7), i2(r * 20 + p % 11), i2(r * 2 + p % 5),
                              0.01f * static_cast<float>(r + p % 13)};
            m.VMix(p, r) = {i2(600 + r % 10), i2(200), i2(100), i2(p % 50), 0, 0};
        }
        for (int r = 0; r < m.TYield.rowCount(); ++r)
            m.TYield(p, r) = {i2(r * 30 + p % 7), i2(r * 150 + p % 11), i2(r * 20 + p % 5),
                              0.1f * static_cast<float>(r + p % 13)};
    }
    m.CutOrderLast = 99;
    m.CutOrder.assign(100, 0);
    m.CutOrderKey.assign(100, 0);
    for (int i = 0; i < 100; ++i) m.CutOrder[static_cast<std::size_t>(i)] = i2(i * 300);
    return m;
}

Model& project() {
    static Model m = largeProject();
    return m;
}

Folder& folder() {
    static Folder f;
    return f;
}

void BM_SaveArx(benchmark::State& state) {
    QuietHost quiet;
    Model& m = project();
    const std::string path = folder().file("large.arx");
    for (auto _ : state) SaveArx(m, quiet.host, path, kCurrentFileVersion, false);
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(path)));
}
BENCHMARK(BM_SaveArx)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_LoadARX(benchmark::State& state) {
    QuietHost quiet;
    const std::string path = folder().file("to_load.arx");
    SaveArx(project(), quiet.host, path, kCurrentFileVersion, false);
    Model m;
    SetDefaults(m);
    for (auto _ : state) {
        if (!LoadARX(m, quiet.host, path)) {
            state.SkipWithError("the project did not load");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(path)));
}
BENCHMARK(BM_LoadARX)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
