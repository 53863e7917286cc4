find_package(EXPAT REQUIRED)
find_package(pugixml REQUIRED)
vrk_bench(xml XMLBench.cpp)
target_link_libraries(bench_xml PRIVATE vrk_xml EXPAT::EXPAT pugixml::pugixml)
