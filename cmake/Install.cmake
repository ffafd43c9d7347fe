# What `cmake --install` puts where, and the Debian package made of it. Programs find their files
# relative to themselves, so that any prefix works and may be moved.

install(TARGETS tessary tessary-editor RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(installed_data ${CMAKE_INSTALL_DATADIR}/tessary)
install(DIRECTORY ${CMAKE_BINARY_DIR}/share/tessary/ DESTINATION ${installed_data})

# Desktop: starter, names of file types, description for software centres, icons.
set(desktop_dir ${CMAKE_SOURCE_DIR}/resources/desktop)
install(FILES ${desktop_dir}/tessary.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${desktop_dir}/tessary.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
configure_file(${desktop_dir}/local.tessary.Tessary.metainfo.xml.in
               ${CMAKE_BINARY_DIR}/desktop/local.tessary.Tessary.metainfo.xml @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/desktop/local.tessary.Tessary.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${desktop_dir}/icons/tessary.svg DESTINATION ${icons}/scalable/apps)
install(FILES ${desktop_dir}/icons/application-x-tessary-composition.svg
        DESTINATION ${icons}/scalable/mimetypes)
install(FILES ${desktop_dir}/icons/tessary-symbolic.svg DESTINATION ${icons}/symbolic/apps)
foreach(size 16 24 32 48 64 128 256)
  install(FILES ${desktop_dir}/icons/tessary-${size}.png DESTINATION ${icons}/${size}x${size}/apps
          RENAME tessary.png)
endforeach()

# Manual pages and completions; the program writes its own, so that they say what it does.
set(man_dir ${CMAKE_BINARY_DIR}/desktop/man)
file(MAKE_DIRECTORY ${man_dir} ${CMAKE_BINARY_DIR}/desktop/completions)
configure_file(${desktop_dir}/tessary-editor.1.in ${man_dir}/tessary-editor.1 @ONLY)
set(own_texts)
function(add_own_text output)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:tessary> ${ARGN} >
            ${output}
    DEPENDS tessary
    VERBATIM)
  set(own_texts ${own_texts} ${output} PARENT_SCOPE)
endfunction()
add_own_text(${man_dir}/tessary.1 manual)
foreach(shell bash zsh fish)
  add_own_text(${CMAKE_BINARY_DIR}/desktop/completions/tessary.${shell} completion ${shell})
endforeach()
foreach(page tessary tessary-editor)
  add_custom_command(
    OUTPUT ${man_dir}/${page}.1.gz
    COMMAND gzip -9nfk ${page}.1
    DEPENDS ${man_dir}/${page}.1
    WORKING_DIRECTORY ${man_dir}
    VERBATIM)
  list(APPEND own_texts ${man_dir}/${page}.1.gz)
  install(FILES ${man_dir}/${page}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
add_custom_target(manual ALL DEPENDS ${own_texts})

set(completions ${CMAKE_BINARY_DIR}/desktop/completions)
foreach(program tessary tessary-editor)
  install(FILES ${completions}/tessary.bash RENAME ${program}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${completions}/tessary.fish RENAME ${program}.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()
# Debian's zsh looks in another folder below /usr than below /usr/local.
install(CODE "set(zsh_folder site-functions)
if(CMAKE_INSTALL_PREFIX MATCHES \"/usr$\")
  set(zsh_folder vendor-completions)
endif()
file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${zsh_folder}\"
     TYPE FILE RENAME _tessary FILES \"${completions}/tessary.zsh\")")

install(FILES ${CMAKE_SOURCE_DIR}/LICENSE RENAME copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tessary)

# The Debian package: scripts/make-package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessary)
set(CPACK_PACKAGE_CONTACT "The Tessary developers <tessary@users.noreply.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor and renderer for broadcast graphics templates")
set(CPACK_PACKAGE_DESCRIPTION
    "Lower thirds, tickers and score boards are built out of components,
animated with key frames, held at stop frames until a trigger arrives and
exported as one composition file that a playout system fills in on air.
.
The package has the editor (tessary-editor), the command line (tessary),
which makes, checks and renders graphics without a display, the standard
components and example graphics.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Beside the libraries: the interface's and the examples' font, pictures in TIFF, and for the
# desktop Wayland, fonts of other scripts, icons and file types.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-inter, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "qt6-wayland, fonts-noto-core, fonts-noto-color-emoji, hicolor-icon-theme, shared-mime-info")

# Debian wants to be told, packed, what changed.
configure_file(${desktop_dir}/changelog.in ${CMAKE_BINARY_DIR}/desktop/changelog.Debian @ONLY)
execute_process(COMMAND gzip -9nfk ${CMAKE_BINARY_DIR}/desktop/changelog.Debian)
install(FILES ${CMAKE_BINARY_DIR}/desktop/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tessary)
include(CPack)
