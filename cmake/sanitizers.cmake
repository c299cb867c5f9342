# TARN_SANITIZE names the sanitizers that everything is built with, such as "address,undefined".
set(TARN_SANITIZE "" CACHE STRING "Sanitizers to build with, separated by commas")
if(TARN_SANITIZE)
  add_compile_options(-fsanitize=${TARN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARN_SANITIZE})
endif()
