find_package(PkgConfig REQUIRED)
pkg_check_modules(BenchXaw REQUIRED IMPORTED_TARGET xaw7)

add_executable(empty_program EmptyProgram.cpp)
# Linked whether it uses them or not: the same libraries as the program itself.
target_link_libraries(empty_program PRIVATE
  vrk_options -Wl,--no-as-needed PkgConfig::BenchXaw X11::Xt X11::X11 Threads::Threads stdc++ m)

add_executable(bench_startup StartupBench.cpp)
target_link_libraries(bench_startup PRIVATE vrk_options)
add_dependencies(bench_startup VRKClientUI empty_program)
