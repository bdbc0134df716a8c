#include "schemac/driver/compile.h"

#include "schemac/diagnostic/catalogue.h"
#include "schemac/parse/parser.h"
#include "schemac/sema/analyse.h"

#include <set>
#include <stdexcept>

namespace Schemac {

namespace {

namespace fs = std::filesystem;

class InputReader {
public:
    InputReader(const fs::path& root, SourceManager& sources, Reporter& reporter)
        : m_root(fs::absolute(root).lexically_normal()), m_sources(sources), m_reporter(reporter) {}

    void Read(const std::vector<std::string>& paths, bool isImported) {
        for (const std::string& path : paths) {
            ReadFile(path, isImported);
        }
    }

    const std::vector<Sema::InputFile>& Files() const { return m_files; }

private:
    void ReadFile(const std::string& path, bool isImported) {
        const fs::path relative = fs::absolute(path).lexically_normal().lexically_relative(m_root);
        if (relative.empty() || *relative.begin() == "..") {
            m_reporter.Report({}, Diagnostics::kOutsideRoot, path);
            return;
        }
        if (!m_seen.insert(relative).second) {
            m_reporter.Report({}, Diagnostics::kFileTwice, path);
            return;
        }
        try {
            const std::uint32_t file = m_sources.Load(path);
            m_files.push_back({Parse(m_sources, file, m_reporter), relative.generic_string(), isImported});
        } catch (const std::runtime_error& error) {
            m_reporter.Report({}, Diagnostics::kUnreadableFile, path, error.what());
        }
    }

    fs::path m_root;
    SourceManager& m_sources;
    Reporter& m_reporter;
    std::set<fs::path> m_seen;
    std::vector<Sema::InputFile> m_files;
};

} // namespace

std::unique_ptr<const Model::Module> Compile(
    const CompileOptions& options, SourceManager& sources, Reporter& reporter) {
    InputReader reader(options.sourceRoot, sources, reporter);
    reader.Read(options.files, false);
    reader.Read(options.imports, true);
    if (reporter.HasErrors()) {
        return nullptr;
    }
    return Sema::Analyse(options.library, reader.Files(), reporter);
}

} // namespace Schemac
