# Puts a file's bytes into a target, as `extern const std::string_view SYMBOL` of the namespace zn.
#
#   zn_embed(TARGET SYMBOL FILE)
function(zn_embed target symbol file)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded/${symbol}.cpp)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DSYMBOL=${symbol} -DINPUT=${file} -DOUTPUT=${output}
      -P ${CMAKE_SOURCE_DIR}/cmake/EmbedFile.cmake
    DEPENDS ${file} ${CMAKE_SOURCE_DIR}/cmake/EmbedFile.cmake
    VERBATIM)
  target_sources(${target} PRIVATE ${output})
endfunction()
