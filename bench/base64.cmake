find_package(OpenSSL REQUIRED COMPONENTS Crypto)
vrk_bench(base64 Base64Bench.cpp)
target_link_libraries(bench_base64 PRIVATE vrk_foundation OpenSSL::Crypto)
