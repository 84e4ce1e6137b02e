# photoinfo_embed_page(FOLDER OUTPUT): a source file that holds the page of FOLDER: page.html with
# page.css and page.js in it, and the digests by which the page lets its browser run and apply nothing
# but these two.

# photoinfo_digest(TEXT VARIABLE): the SHA-256 digest of the text in Base64.
function(photoinfo_digest text variable)
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 hex "${text}")
  set(digest "")
  # Six hexadecimal digits make four of Base64; of the last group only four are there.
  foreach(begin RANGE 0 60 6)
    string(SUBSTRING "${hex}00" ${begin} 6 group)
    foreach(shift 18 12 6 0)
      math(EXPR digit "(0x${group} >> ${shift}) & 63")
      string(SUBSTRING "${digits}" ${digit} 1 character)
      string(APPEND digest "${character}")
    endforeach()
  endforeach()
  string(SUBSTRING "${digest}" 0 43 digest)
  set(${variable} "${digest}=" PARENT_SCOPE)
endfunction()

# photoinfo_read(FILE VARIABLE): the file's text, with line ends as a browser counts them.
function(photoinfo_read file variable)
  file(READ "${file}" text)
  string(REPLACE "\r\n" "\n" text "${text}")
  set(${variable} "${text}" PARENT_SCOPE)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
endfunction()

function(photoinfo_embed_page folder output)
  photoinfo_read("${folder}/page.css" PAGE_STYLE)
  photoinfo_read("${folder}/page.js" PAGE_PROGRAM)
  photoinfo_digest("${PAGE_STYLE}" PAGE_STYLE_DIGEST)
  photoinfo_digest("${PAGE_PROGRAM}" PAGE_PROGRAM_DIGEST)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${folder}/page.html")
  set(page "${CMAKE_CURRENT_BINARY_DIR}/report_page.html")
  configure_file("${folder}/page.html" "${page}" @ONLY NEWLINE_STYLE LF)
  file(READ "${page}" PAGE_BYTES HEX)
  string(REGEX REPLACE "(..)" "0x\\1," PAGE_BYTES "${PAGE_BYTES}")
  # Lines of a length that every tool can read.
  string(REGEX REPLACE "(................................................................................)"
                       "\\1\n" PAGE_BYTES "${PAGE_BYTES}")
  configure_file("${CMAKE_CURRENT_SOURCE_DIR}/report/report_template.cpp.in" "${output}" @ONLY)
endfunction()
