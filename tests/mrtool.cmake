# The program, by its parts and as a whole.

mr_test(mrtool_test
  LIBRARIES mr_tool_parts
  SOURCES
    mrtool/childProcessTest.cpp
    mrtool/fileNameTest.cpp
    mrtool/importTest.cpp
    mrtool/infoTest.cpp
    mrtool/messagesTest.cpp
    mrtool/program.cpp
    mrtool/programTest.cpp
    mrtool/surfaceTest.cpp
    mrtool/thumbPlanTest.cpp
    mrtool/thumbTest.cpp
    mrtool/untrustedReaderTest.cpp
    mrtool/wireTest.cpp)
find_package(nlohmann_json REQUIRED)
target_link_libraries(mrtool_test PRIVATE nlohmann_json::nlohmann_json)
target_compile_definitions(mrtool_test PRIVATE MRTOOL="$<TARGET_FILE:mrtool>")
add_dependencies(mrtool_test mrtool)
