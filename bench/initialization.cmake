add_executable(bench_initialization
  InitializationBench.cpp
  ${PROJECT_SOURCE_DIR}/tests/session/ClientSession.cpp
  ${PROJECT_SOURCE_DIR}/tests/session/Documents.cpp
  ${PROJECT_SOURCE_DIR}/tests/session/PrivateDisplay.cpp)
target_compile_definitions(bench_initialization PRIVATE VRKCLIENTUI_EXECUTABLE="$<TARGET_FILE:VRKClientUI>")
target_link_libraries(bench_initialization PRIVATE vrk_app)
add_dependencies(bench_initialization VRKClientUI)
