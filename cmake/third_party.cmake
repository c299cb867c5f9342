# Header-only libraries from the distribution's packages. A cross compiler does not look where they are
# installed, so it is told to look there after its own headers.
find_package(Threads REQUIRED)

add_library(tarn_third_party INTERFACE)
target_compile_definitions(tarn_third_party INTERFACE FMT_HEADER_ONLY BOOST_ALL_NO_LIB BOOST_ASIO_NO_DEPRECATED)
target_link_libraries(tarn_third_party INTERFACE Threads::Threads)
if(CMAKE_CROSSCOMPILING)
  target_compile_options(tarn_third_party INTERFACE "SHELL:-idirafter /usr/include")
endif()
