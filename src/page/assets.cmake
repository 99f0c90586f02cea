# The script and the style of pages as constants, and by which hash a browser lets that script alone run.
# Makes generated/page_assets.h.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/page.js
             ${CMAKE_CURRENT_LIST_DIR}/page.css)
file(READ ${CMAKE_CURRENT_LIST_DIR}/page.js page_script)
file(READ ${CMAKE_CURRENT_LIST_DIR}/page.css page_style)
string(SHA256 page_script_hex "${page_script}")

set(digits ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
set(page_script_hash "")
foreach(at RANGE 0 60 6) # 32 bytes are 10 groups of three and two more
  string(SUBSTRING "${page_script_hex}00" ${at} 6 three_bytes)
  math(EXPR bits "0x${three_bytes}")
  foreach(shift 18 12 6 0)
    math(EXPR digit "(${bits} >> ${shift}) & 63")
    string(SUBSTRING ${digits} ${digit} 1 letter)
    string(APPEND page_script_hash ${letter})
  endforeach()
endforeach()
string(SUBSTRING ${page_script_hash} 0 43 page_script_hash)
string(APPEND page_script_hash "=")
configure_file(${CMAKE_CURRENT_LIST_DIR}/page_assets.h.in generated/page_assets.h @ONLY)
