# `cpack` in a build folder makes the Debian package from the install rules;
# scripts/package.sh is the way in. Its dependencies come from the binary
# (dpkg-shlibdeps), so they follow whatever Qt and ICU the build linked.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessary)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Tessary developers")
set(CPACK_PACKAGE_CONTACT "The Tessary developers <maintainers@users.noreply.c-seed-c1a5b8b6.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "keyboard-driven window snapping, launcher and clipboard history")
set(CPACK_PACKAGE_DESCRIPTION "Tessary lives in the tray of an X11 session. One set of global shortcuts
snaps the front window to halves, quarters, thirds or the next monitor, opens
a launcher for applications, files, snippets, arithmetic and web searches,
and offers a searchable history of everything copied.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The same permissions whatever the umask of the machine that builds it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

include(CPack)
