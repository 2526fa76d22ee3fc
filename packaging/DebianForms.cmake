# Run by CPack on the staged trees before they become packages: manual pages and change logs as Debian's policy has
# them, packed without a time of their own so that equal sources give equal packages.

# An entry of Debian's change log for each version of CHANGELOG.md: "## 1.2.3 - 2027-01-31", then points that begin
# with "- ". Of two versions of one day the later one has the later second.
function(debian_changelog package file result)
  file(STRINGS ${file} lines ENCODING UTF-8)
  set(text "")
  set(end "")
  set(earlier 0)
  foreach(line IN LISTS lines)
    if(line MATCHES "^## ([0-9.]+) - ([0-9-]+)$")
      set(version ${CMAKE_MATCH_1})
      execute_process(COMMAND date -u -R -d "${CMAKE_MATCH_2} 12:00 UTC ${earlier} seconds ago" OUTPUT_VARIABLE date
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
      math(EXPR earlier "${earlier} + 1")
      string(APPEND text "${end}${package} (${version}) stable; urgency=medium\n\n")
      set(end "\n -- ${CPACK_PACKAGE_CONTACT}  ${date}\n\n")
    elseif(end AND line MATCHES "^- (.*)$")
      string(APPEND text "  * ${CMAKE_MATCH_1}\n")
    elseif(end AND line MATCHES "^  (.*)$")
      string(APPEND text "    ${CMAKE_MATCH_1}\n")
    endif()
  endforeach()
  set(${result} "${text}${end}" PARENT_SCOPE)
endfunction()

foreach(package IN LISTS CPACK_COMPONENTS_ALL)
  set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${package}${CPACK_PACKAGING_INSTALL_PREFIX})
  set(documents ${root}/share/doc/${package})
  debian_changelog(${package} ${documents}/CHANGELOG.md changelog)
  file(WRITE ${documents}/changelog "${changelog}")
  file(REMOVE ${documents}/CHANGELOG.md)
  # Debian's own shell looks there; its folder of functions belongs to the administrator.
  if(EXISTS ${root}/share/zsh/site-functions)
    file(RENAME ${root}/share/zsh/site-functions ${root}/share/zsh/vendor-completions)
  endif()
  file(GLOB pages ${root}/share/man/man*/*.[1-9])
  execute_process(COMMAND gzip -9n ${documents}/changelog ${pages} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
