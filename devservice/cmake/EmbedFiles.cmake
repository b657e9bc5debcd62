# Writes OUTPUT, a C++ source that holds the files named in NAMES (separated by commas), paths below DIRECTORY.
string(REPLACE "," ";" NAMES "${NAMES}")
set(arrays "")
set(table "")
set(count 0)
foreach(name IN LISTS NAMES)
  file(READ "${DIRECTORY}/${name}" bytes HEX)
  string(LENGTH "${bytes}" digits)
  math(EXPR size "${digits} / 2")
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char kContent${count}[] = {${bytes} 0};\n")
  string(APPEND table "    {\"${name}\", {kContent${count}, ${size}}},\n")
  math(EXPR count "${count} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include \"EmbeddedFile.h\"

namespace merovanta::devservice {
namespace {
${arrays}
constexpr EmbeddedFile kFiles[] = {
${table}};
}  // namespace

const EmbeddedFile* const kEmbeddedFiles = kFiles;
const unsigned kEmbeddedFileCount = ${count};

}  // namespace merovanta::devservice
")
