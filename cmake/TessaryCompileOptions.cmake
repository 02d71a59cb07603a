# Project-wide compiler settings, applied through the tessary_options interface
# target so third-party code (Qt's moc output aside) is not affected.
add_library(tessary_options INTERFACE)
target_compile_options(tessary_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wimplicit-fallthrough)
target_compile_definitions(tessary_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
  QT_USE_QSTRINGBUILDER)
target_include_directories(tessary_options INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(TESSARY_WERROR)
  target_compile_options(tessary_options INTERFACE -Werror)
endif()

if(TESSARY_SANITIZE)
  # AddressSanitizer everywhere; UndefinedBehaviorSanitizer only in the
  # product's code (src/CMakeLists.txt adds it there): in test, benchmark and
  # fuzzing code it would catch little and adds a third to their compile time.
  add_compile_options(-fsanitize=address -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(TESSARY_FUZZ)
  # Coverage for every library the fuzz targets reach, not only the targets.
  set(_fuzz -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=function -fno-sanitize-recover=undefined
            -fno-omit-frame-pointer)
  add_compile_options(${_fuzz})
  add_link_options(-fsanitize=address,undefined)
endif()
