// A host that has other versions of what the library is built on: calls that go astray end it.
#include <cstdlib>
#include <string>

#define ASTRAY __attribute__((visibility("default"), used))

namespace google::protobuf {
class ASTRAY MessageLite {
 public:
    std::string SerializeAsString() const;
    bool SerializeToString(std::string* output) const;
    bool ParseFromString(const std::string& data);
};
std::string MessageLite::SerializeAsString() const {
    std::abort();
}
bool MessageLite::SerializeToString(std::string* /*output*/) const {
    std::abort();
}
bool MessageLite::ParseFromString(const std::string& /*data*/) {
    std::abort();
}
namespace internal {
ASTRAY void VerifyVersion(int /*header*/, int /*library*/, const char* /*file*/) {
    std::abort();
}
ASTRAY void InitProtobufDefaults() {
    std::abort();
}
ASTRAY void InitProtobufDefaultsSlow() {
    std::abort();
}
}  // namespace internal
}  // namespace google::protobuf

namespace boost::urls {
class ASTRAY url_view;
ASTRAY int parse_uri(std::string /*text*/) {
    std::abort();
}
}  // namespace boost::urls
