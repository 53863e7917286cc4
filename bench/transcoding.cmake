find_package(ICU REQUIRED COMPONENTS uc)
vrk_bench(transcoding TranscodingBench.cpp)
target_link_libraries(bench_transcoding PRIVATE vrk_text ICU::uc)
