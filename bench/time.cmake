vrk_bench(time TimeBench.cpp)
target_link_libraries(bench_time PRIVATE vrk_time)
