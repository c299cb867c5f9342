# The warnings that every source of the project is free of.
add_library(tarn_warnings INTERFACE)
target_compile_options(tarn_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
