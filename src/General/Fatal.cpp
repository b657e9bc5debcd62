#include "General/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace merovanta {

void fatalError(std::string_view message, const std::source_location& where) {
    std::fprintf(stderr, "Fatal error: %.*s (%s:%u)\n", static_cast<int>(message.size()), message.data(),
                 where.file_name(), static_cast<unsigned>(where.line()));
    std::abort();
}

}  // namespace merovanta
