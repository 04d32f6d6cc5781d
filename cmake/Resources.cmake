# What the window carries within it: icons, the pages of docs/ and their pictures, under the names that links
# between the pages use. A file dropped into one of these folders comes along.

# quorvelant_resources(TARGET): adds them to a library under the name "window" (Q_INIT_RESOURCE).
function(quorvelant_resources target)
  set(root ${PROJECT_SOURCE_DIR})
  set(entries "")
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${root} ${root}/docs/*.md ${root}/docs/pictures/*.png
       ${root}/docs/pictures/*.jpg ${root}/data/icons/*.png)
  list(APPEND files LICENSE)
  list(SORT files)
  foreach(file ${files})
    set(name ${file})
    string(REGEX REPLACE "^data/icons/actions/" "icons/" name ${name})
    string(REGEX REPLACE "^data/icons/([0-9]+)/org.*" "icons/application-\\1.png" name ${name})
    if(NOT name MATCHES "^data/")
      string(APPEND entries "<file alias=\"${name}\">${root}/${file}</file>\n")
    endif()
  endforeach()
  set(list ${CMAKE_CURRENT_BINARY_DIR}/window.qrc)
  file(CONFIGURE OUTPUT ${list} CONTENT "<RCC><qresource prefix=\"/\">\n${entries}</qresource></RCC>\n")
  qt_add_resources(sources ${list})
  set_source_files_properties(${sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON COMPILE_OPTIONS -w)
  target_sources(${target} PRIVATE ${sources})
endfunction()
