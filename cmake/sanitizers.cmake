# TARN_SANITIZE names the sanitizers that everything is built with, such as "address,undefined".
set(TARN_SANITIZE "" CACHE STRING "Sanitizers to build with, separated by commas")
if(TARN_SANITIZE)
  add_compile_options(-fsanitize=${TARN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARN_SANITIZE})
  if(TARN_SANITIZE MATCHES thread)
    # The thread sanitizer does not follow fences; Boost.Asio's stand beside mutexes that it does follow.
    add_compile_definitions(BOOST_ASIO_DISABLE_FENCED_BLOCK)
    add_compile_options(-Wno-tsan)
  endif()
endif()
