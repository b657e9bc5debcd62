# Writes OUTPUT, a C++ source that holds the files named in FILES and, made small by the bundler, the scripts and styles
# named in BUNDLES with all that they import. Names are paths below DIRECTORY, separated by commas. WORK is for files in
# between.
cmake_minimum_required(VERSION 3.25)
string(REPLACE "," ";" FILES "${FILES}")
string(REPLACE "," ";" BUNDLES "${BUNDLES}")
file(REMOVE_RECURSE "${WORK}")
foreach(name IN LISTS BUNDLES)
  # As the service serves them: what pages share lies beside their own.
  get_filename_component(folder "${name}" DIRECTORY)
  file(COPY "${DIRECTORY}/${folder}/" "${DIRECTORY}/shared/" DESTINATION "${WORK}/${folder}")
  execute_process(
    COMMAND "${ESBUILD}" "${WORK}/${name}" --bundle --minify --format=esm --target=chrome102 --log-level=warning
            --outfile=${WORK}/bundled/${name}
    RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "The bundle ${name} cannot be made")
  endif()
endforeach()
set(arrays "")
set(table "")
set(count 0)
foreach(name IN LISTS FILES BUNDLES)
  if(name IN_LIST BUNDLES)
    file(READ "${WORK}/bundled/${name}" bytes HEX)
  else()
    file(READ "${DIRECTORY}/${name}" bytes HEX)
  endif()
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
