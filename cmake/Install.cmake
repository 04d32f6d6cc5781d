# What an installation has besides the programs: pages, completion, and what desktops look for, each where the file
# system hierarchy and the freedesktop rules want it.

set(id org.quorvelant.Quorvelant)
set(pages ${PROJECT_BINARY_DIR}/pages)
file(MAKE_DIRECTORY ${pages})

add_executable(write_pages ${PROJECT_SOURCE_DIR}/tools/write_pages.cpp)
target_link_libraries(write_pages PRIVATE app quorvelant_flags)
add_custom_command(
  OUTPUT ${pages}/quorvelant.1 ${pages}/quorvelant-window.1 ${pages}/quorvelant
  COMMAND write_pages man > ${pages}/quorvelant.1
  COMMAND write_pages completion > ${pages}/quorvelant
  COMMAND $<TARGET_FILE:quorvelant-window> --help > ${pages}/quorvelant-window.txt
  COMMAND write_pages help quorvelant-window < ${pages}/quorvelant-window.txt > ${pages}/quorvelant-window.1
  DEPENDS write_pages quorvelant-window
  COMMENT "Writing man pages and completion"
  VERBATIM)
add_custom_target(pages ALL DEPENDS ${pages}/quorvelant.1 ${pages}/quorvelant-window.1 ${pages}/quorvelant)

install(FILES ${pages}/quorvelant.1 ${pages}/quorvelant-window.1 DESTINATION share/man/man1)
install(FILES ${pages}/quorvelant DESTINATION share/bash-completion/completions)

install(FILES data/${id}.desktop DESTINATION share/applications)
install(FILES data/${id}.metainfo.xml DESTINATION share/metainfo)
install(FILES data/${id}.xml DESTINATION share/mime/packages)
foreach(size 16 24 32 48 64 128 256)
  install(FILES data/icons/${size}/${id}.png DESTINATION share/icons/hicolor/${size}x${size}/apps)
  install(FILES data/icons/${size}/application-x-quorvelant-project.png
          DESTINATION share/icons/hicolor/${size}x${size}/mimetypes)
endforeach()
install(FILES data/icons/${id}.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES data/icons/application-x-quorvelant-project.svg DESTINATION share/icons/hicolor/scalable/mimetypes)

# The programs open the example, so it is no mere documentation.
install(FILES examples/demo.qvp examples/wizard.toml DESTINATION share/quorvelant/examples)
install(DIRECTORY examples/media DESTINATION share/quorvelant/examples FILES_MATCHING
        REGEX "\\.(m2v|ac3|png|sst)$")
# As in the checkout, so that links between pages hold.
install(DIRECTORY docs DESTINATION share/doc/quorvelant FILES_MATCHING REGEX "\\.(md|png|jpg)$")
install(FILES README.md CHANGELOG.md DESTINATION share/doc/quorvelant)
