#include "importhost/validate/checks/stage/OwnSample.h"

#include "hostkit/system/Text.h"

namespace importhost::validate {

Clip writeOwn(const CheckRun& run, const std::filesystem::path& name, const aviwriter::SampleOptions& options,
              const std::function<void(aviwriter::Bytes&)>& change) {
    aviwriter::Bytes bytes = aviwriter::sampleBytes(options);
    if (change) {
        change(bytes);
    }
    writeFile(run.folder() / name, bytes);
    return {run.folder() / name, hostkit::toUtf8(name.filename()), ClipKind::Good, options};
}

}  // namespace importhost::validate
