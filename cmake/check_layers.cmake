# The layers of Zelkova2's code, lowest first: a file may include the headers of its own folder
# and of the folders of the layers below its own, never of a layer above it nor of another folder
# of its own layer. Run on every build (cmake -DROOT=<source> -P check_layers.cmake); an include
# that breaks the order fails the build and is named.
set(ZK_LAYERS
  "support"                   # text, errors, owned handles
  "platform launch"           # the seam and its backends; the programs' entry
  "vocabulary"                # names, numbers and tables every program shares
  "diagnostics"               # the error log and the system's error texts
  "settings winsupport"       # the registry; subclassing, the process context, the icon
  "signals hotkeys desktop"   # the shared state, the hotkeys, the desktops and their companions
  "controller"                # the controller
  "window shared"             # the companions' views' common parts; what every companion uses
  "resident tool_support"     # the companions that run for Zelkova2's life; the user's tools
  "DeskHerald DeskPilot ZelkovaError ZelkovaSettings zelkovactl StartZelkova2")  # the programs

set(layer 0)
foreach(folders IN LISTS ZK_LAYERS)
  string(REPLACE " " ";" folders "${folders}")
  foreach(folder IN LISTS folders)
    set(layer_of_${folder} ${layer})
  endforeach()
  math(EXPR layer "${layer} + 1")
endforeach()

file(GLOB_RECURSE sources RELATIVE ${ROOT}
  ${ROOT}/src/*.h ${ROOT}/src/*.cpp ${ROOT}/companions/*.h ${ROOT}/companions/*.cpp)
set(wrong "")
foreach(source IN LISTS sources)
  string(REGEX MATCH "^[a-z]+/([A-Za-z0-9_]+)/" ignored "${source}")
  set(folder ${CMAKE_MATCH_1})
  if(NOT DEFINED layer_of_${folder})
    string(APPEND wrong "\n  ${source}: its folder has no layer")
    continue()
  endif()
  file(STRINGS ${ROOT}/${source} includes REGEX "^#include \"[A-Za-z0-9_]+/")
  foreach(line IN LISTS includes)
    string(REGEX MATCH "^#include \"([A-Za-z0-9_]+)/" ignored "${line}")
    set(used ${CMAKE_MATCH_1})
    if(used STREQUAL folder OR NOT DEFINED layer_of_${used})  # its own, or not Zelkova2's
      continue()
    endif()
    if(NOT layer_of_${used} LESS layer_of_${folder})
      string(APPEND wrong "\n  ${source}: ${line}")
    endif()
  endforeach()
endforeach()
if(wrong)
  message(FATAL_ERROR "An include goes up or sideways in the layers (cmake/check_layers.cmake):"
                      "${wrong}")
endif()
