vrk_bench(text TextBench.cpp)
target_link_libraries(bench_text PRIVATE vrk_text)
