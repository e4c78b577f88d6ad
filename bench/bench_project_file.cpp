// Saving and loading a project of 32,768 polygons, the most that LastPoly can count, each with
// full curves at the default settings: 301 VDYP rows with their species mix and 36 TIPSY rows,
// about 240 MB on disk.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "frame/project_open.hpp"
#include "model/project_file.hpp"
#include "synthetic_project.hpp"

namespace {

using namespace arborex;
using bench::QuietHost;

constexpr int kPolygons = 32768;

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

Model& project() {
    static Model m = bench::syntheticProject(kPolygons, bench::Managements::NaturalThenManaged);
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
