# Every target of ours is built with the same warnings; nothing is imposed on what includes us.
function(own_code target)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wconversion>)
endfunction()
