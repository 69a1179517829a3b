# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Linked PRIVATE by every target of our own: how strictly our code is read.
add_library(dugwise_settings INTERFACE)
target_compile_definitions(dugwise_settings INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_FOREACH
  QT_NO_KEYWORDS
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_URL_CAST_FROM_STRING
  # Copies strings 16 bytes at a time; every processor of these families can.
  $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:RAPIDJSON_SSE2>
  $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},aarch64>:RAPIDJSON_NEON>)
target_compile_options(dugwise_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Wnull-dereference
  # What Qt makes of QML shadows names and looks into tables without asking.
  $<$<NOT:$<BOOL:$<TARGET_PROPERTY:DUGWISE_QML>>>:-Wshadow>
  $<$<BOOL:$<TARGET_PROPERTY:DUGWISE_QML>>:-Wno-null-dereference>
  -Wno-missing-field-initializers # what a designated initialiser leaves out is left out on purpose
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
  $<$<BOOL:${DUGWISE_WARNINGS_AS_ERRORS}>:-Werror>)

if(DUGWISE_SANITIZERS)
  add_compile_options(-fsanitize=${DUGWISE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${DUGWISE_SANITIZERS})
endif()

# dugwise_layer(NAME SOURCES file... LINKS target...): one static library of the house.
function(dugwise_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 LAYER "" "" "SOURCES;LINKS")
  add_library(dugwise_${name} STATIC ${LAYER_SOURCES})
  target_include_directories(dugwise_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(dugwise_${name} PUBLIC ${LAYER_LINKS} PRIVATE dugwise_settings)
endfunction()
