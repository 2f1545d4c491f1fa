#include "importhost/validate/checks/stage/OwnSample.h"

#include "hostkit/system/Text.h"

#include <fstream>
#include <stdexcept>

namespace importhost::validate {

Clip writeOwn(const CheckRun& run, const std::string& name, const aviwriter::SampleOptions& options,
              const std::function<void(aviwriter::Bytes&)>& change) {
    aviwriter::Bytes bytes = aviwriter::sampleBytes(options);
    if (change) {
        change(bytes);
    }
    const std::filesystem::path path = run.folder() / name;
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) {
        throw std::runtime_error("The sample '" + hostkit::toUtf8(path) + "' cannot be written.");
    }
    return {path, name, ClipKind::Good, options};
}

}  // namespace importhost::validate
