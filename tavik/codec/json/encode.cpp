#include "tavik/codec/json/json.h"

#include "tavik/value/print.h"

#include <utility>

namespace Tavik::Json {

std::string Encode(const Any* value, const EncodeOptions& options) {
    if (value == nullptr) {
        throw EncodeError("", "is null");
    }
    PrintOptions print;
    print.showSecrets = true;
    print.indent = options.indent;
    print.version = options.version;
    print.declaredType = options.declaredType;
    std::string text;
    PrintProblem problem;
    if (!TryPrint(value, print, text, problem)) {
        throw EncodeError(std::move(problem.path), std::move(problem.what));
    }
    return text;
}

} // namespace Tavik::Json
