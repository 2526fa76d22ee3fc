# What is installed where, and the Debian packages that are made of it: one list for both.
#
#   cmake --install build/release --prefix /usr     everything, in the places of the file hierarchy standard
#   cpack --config build/release/CPackConfig.cmake  the packages; docs/packages.md tells what each has
#
# The programs and their libraries lie together in one private folder, and what is the same on every machine in one
# below share, with a relative link from there to here: a program finds what belongs to it beside itself, in a build
# folder, below /usr and in a tree that was moved. The commands in the path are relative links into the folder.

include(GNUInstallDirs)
# Installing takes what is built; the tests needn't be.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(CMAKE_LIBRARY_ARCHITECTURE)
  set(private lib/${CMAKE_LIBRARY_ARCHITECTURE}/zntaskaddin)
else()
  set(private ${CMAKE_INSTALL_LIBDIR}/zntaskaddin)
endif()
set(shared ${CMAKE_INSTALL_DATADIR}/zntaskaddin)
set(made ${CMAKE_BINARY_DIR}/packaging)

# zn_install_link(COMPONENT FOLDER NAME TARGET): a relative link FOLDER/NAME to TARGET, both below the prefix.
function(zn_install_link component folder name target)
  file(MAKE_DIRECTORY ${made}/links/${folder})
  file(RELATIVE_PATH path /${folder} /${target})
  file(CREATE_LINK ${path} ${made}/links/${folder}/${name} SYMBOLIC)
  install(FILES ${made}/links/${folder}/${name} DESTINATION ${folder} COMPONENT ${component})
endfunction()

# The programs and libraries of each component.
set(targets_arkin arkin arkin-desktop arkin-reftree)
set(targets_zentrel zentrel ZENTREL.EXE)
set(targets_zntaskaddin ZNTaskAddIn ZNTaskAddInPages LexMgr TokenCtrl FlowIcons)
foreach(component arkin zentrel zntaskaddin)
  install(TARGETS ${targets_${component}} COMPONENT ${component}
    RUNTIME DESTINATION ${private} LIBRARY DESTINATION ${private})
  install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component} COMPONENT ${component})
  install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component} COMPONENT ${component})
endforeach()
zn_install_link(arkin ${CMAKE_INSTALL_BINDIR} arkin ${private}/arkin)
zn_install_link(zentrel ${CMAKE_INSTALL_BINDIR} zentrel ${private}/zentrel)

# What they find beside themselves: the component, the folder below resources/, its place.
set(data
  "arkin       macros    macros"
  "arkin       tasks     tasks"
  "zntaskaddin LanFiles  LanFiles"
  "zntaskaddin help      Help/ZNTaskAddIn")
foreach(row IN LISTS data)
  string(REGEX MATCHALL "[^ ]+" row "${row}")
  list(GET row 0 component)
  list(GET row 1 folder)
  list(GET row 2 place)
  install(DIRECTORY resources/${folder}/ DESTINATION ${shared}/${place} COMPONENT ${component}
    PATTERN ".git*" EXCLUDE)
  string(REGEX REPLACE "/.*" "" place ${place})
  zn_install_link(${component} ${private} ${place} ${shared}/${place})
endforeach()
file(GLOB samples samples/*.zen*)
install(FILES ${samples} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zentrel/examples COMPONENT zentrel)

# Manual pages and completions are the programs' own help in other forms.
foreach(program arkin zentrel)
  set(forms
    "man  ${program}.1     ${CMAKE_INSTALL_MANDIR}/man1"
    "bash ${program}       ${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
    "zsh  _${program}      ${CMAKE_INSTALL_DATADIR}/zsh/site-functions"
    "fish ${program}.fish  ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
  foreach(row IN LISTS forms)
    string(REGEX MATCHALL "[^ ]+" row "${row}")
    list(GET row 0 form)
    list(GET row 1 name)
    list(GET row 2 folder)
    set(file ${made}/${form}/${name})
    file(MAKE_DIRECTORY ${made}/${form})
    add_custom_command(OUTPUT ${file} COMMAND ${program} --help-as ${form} > ${file} DEPENDS ${program} VERBATIM)
    list(APPEND help_files ${file})
    install(FILES ${file} DESTINATION ${folder} COMPONENT ${program})
  endforeach()
endforeach()
add_custom_target(help_files ALL DEPENDS ${help_files})
zn_program(help_files)

# The desktop: file types, what opens them, icons.
install(FILES packaging/mime/zentrel.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT zentrel)
set(applications ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/desktop/zentrel-info.desktop DESTINATION ${applications} COMPONENT zentrel)
install(FILES packaging/desktop/arkin-worker.desktop DESTINATION ${applications} COMPONENT arkin)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable)
foreach(kind part assembly drawing)
  install(FILES resources/images/files/${kind}.svg RENAME application-x-zentrel-${kind}.svg
    DESTINATION ${icons}/mimetypes COMPONENT zentrel)
endforeach()
install(FILES resources/images/folder-vault.svg RENAME arkin.svg DESTINATION ${icons}/apps COMPONENT arkin)

# Workers that systemd starts.
install(FILES packaging/systemd/arkin-worker.service DESTINATION lib/systemd/user COMPONENT arkin)
install(FILES packaging/systemd/arkin-worker@.service DESTINATION lib/systemd/system COMPONENT arkin)

# The packages.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zntaskaddin)
set(CPACK_PACKAGE_VENDOR "ZNTaskAddIn maintainers")
set(CPACK_PACKAGE_CONTACT "ZNTaskAddIn maintainers <maintainers@zntaskaddin.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL arkin zentrel zntaskaddin)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Turns what every system takes into the forms that Debian's policy wants.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/DebianForms.cmake)

# The first line is the summary.
set(CPACK_COMPONENT_ARKIN_DESCRIPTION
"vault of CAD files, and the tasks that work on them
Keeps versions, references and file card values of CAD files in a database,
and carries out tasks on them: conversions, prints and macros, at once or by
workers that take queued runs one after the other.

The tasks' work is done by add-ins such as that of zntaskaddin, which drive
a CAD application such as zentrel.")
set(CPACK_COMPONENT_ZENTREL_DESCRIPTION
"CAD application that reads, converts and prints documents by macros
Opens parts, assemblies and drawings and those of STEP and IGES, writes STEP,
IGES, STL, PDF, DXF and others, and prints. It has no window of its own: a
worker drives it, or a macro of its built-in language.")
set(CPACK_COMPONENT_ZNTASKADDIN_DESCRIPTION
"add-in that converts and prints a vault's CAD files in the background
An administrator sets a task up on its pages, a user launches it on files, and
a worker puts the results into the vault, with references, file card values
and a log. The CAD application is driven by a macro that can be changed.")
set(CPACK_DEBIAN_ARKIN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_ZENTREL_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_ZNTASKADDIN_PACKAGE_SECTION misc)
foreach(component ARKIN ZENTREL ZNTASKADDIN)
  string(TOLOWER ${component} CPACK_DEBIAN_${component}_PACKAGE_NAME)
endforeach()
# The three meet at contracts of their own; a set of one version is what the tests have seen.
set(same "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_ARKIN_PACKAGE_RECOMMENDS "zntaskaddin ${same}, zentrel ${same}")
set(CPACK_DEBIAN_ZNTASKADDIN_PACKAGE_RECOMMENDS "arkin ${same}, zentrel ${same}")
set(CPACK_DEBIAN_ZENTREL_PACKAGE_RECOMMENDS "fonts-dejavu-core")
set(CPACK_DEBIAN_ZENTREL_PACKAGE_SUGGESTS "arkin ${same}, fonts-noto-cjk")
include(CPack)
