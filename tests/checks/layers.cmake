# Holds every #include to the direction that the folders stand in, and every file to a readable length:
#   cmake -DROOT=<tree> -DPUBLIC_HEADERS=<list of paths relative to the tree> -P layers.cmake
# Prints one line a fault and fails when there is any.
cmake_minimum_required(VERSION 3.25)

# What a file below a folder may include of ours: folders, or single headers. A folder that has no row is not checked
# (tests/ and bench/ look at everything).
set(below_base      base)
set(below_platform  base platform)
set(below_colour    base colour)
set(below_map       base map)
set(below_grid      base grid)
set(below_seismic   base seismic)
set(below_graphics  base graphics platform)
set(below_views     base views graphics map grid colour seismic platform)
set(below_apps      apps base views graphics map grid colour seismic platform)
set(below_examples  examples base views graphics map grid colour seismic platform)
set(below_python    python apps base views graphics map grid colour seismic platform)
set(below_designer  designer base views graphics map grid colour seismic platform)
set(layers base platform colour map grid seismic graphics views apps designer examples python)

# The library's folders stand in one root, whose name starts every include.
set(library base platform colour map grid seismic graphics views)
set(library_root src/XOV_Graphics)

# Programs use the library as a stranger would.
set(sees_public_headers_only apps designer examples)

# The desktop is the platform's business. An umbrella header such as <QtGui> would bring all of it along.
set(desktop_headers
  "^(Qt[A-Za-z]+/)?(QPainter|QPdfWriter|QImageWriter|QFileDialog|QClipboard|QDrag|QtGui|QtWidgets|QtPrintSupport|QPrint[A-Za-z]*)$")

# Of programs the desk opens files and prints by itself, in one folder of its own: dialogs that the library does not have.
set(desktop_places "^(src/XOV_Graphics/platform/|apps/desk/desktop/)")

# Sockets, and the folders that talk to servers.
set(network_headers "^(QtNetwork(/.*)?|Q(Tcp|Ssl|Udp|Local|Network|Host|Abstract)(Socket|Server|Address|Info|AccessManager|Request|Reply)[A-Za-z]*)$")
set(network_folders "${library_root}/seismic/realtime/(seedlink|eventservice)/")

# The parser of command lines, whose header costs seconds in each file that calls it, and who knows of it.
set(parser_header "^CLI/")
set(parser_places "^apps/xov/(options/|documents/OptionTable[.]cpp|commands/CommandLine[.]cpp)")

# What base/ does without, though models may have colours and paths.
set(painting_headers "^(Qt(Gui|Widgets)/)?(QColor|QImage|QFont.*|QPainter.*|QPen|QBrush|QPixmap|QTransform|QWidget)$")

set(longest_file 500)
# Files that may be longer, each with its reason in a comment.
set(may_be_longer)

set(faults 0)
function(fault text)
  message(NOTICE "${text}")
  math(EXPR count "${faults} + 1")
  set(faults ${count} PARENT_SCOPE)
endfunction()

# --- lengths

file(GLOB_RECURSE texts RELATIVE ${ROOT} ${ROOT}/cmake/*.h)
foreach(folder IN ITEMS src apps designer examples tests bench)
  file(GLOB_RECURSE some RELATIVE ${ROOT} ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp)
  list(APPEND texts ${some})
endforeach()
foreach(file IN LISTS texts)
  file(READ ${ROOT}/${file} content)
  string(REGEX MATCHALL "\n" ends "${content}")
  list(LENGTH ends lines)
  if(lines GREATER longest_file AND NOT file IN_LIST may_be_longer)
    fault("${file}: ${lines} lines, more than ${longest_file}")
  endif()
endforeach()

# --- single includes

# Whether one of the allowed folders or headers holds `included`.
function(is_below included allowed result)
  set(${result} FALSE PARENT_SCOPE)
  foreach(place IN LISTS allowed)
    if(included STREQUAL place OR included MATCHES "^${place}/")
      set(${result} TRUE PARENT_SCOPE)
    endif()
  endforeach()
endfunction()

# A view folder uses views/base, and of another view folder only the header of a class that the including file derives
# from.
function(crosses_views file included result)
  set(${result} FALSE PARENT_SCOPE)
  string(REGEX MATCH "^views/[^/]+/" from "${file}")
  string(REGEX MATCH "^views/[^/]+/" to "${included}")
  if(NOT to OR to STREQUAL from OR NOT from)
    return()
  endif()
  cmake_path(GET included STEM class)
  file(READ ${ROOT}/${place} content)
  if(from STREQUAL "views/base/" OR NOT (to STREQUAL "views/base/" OR content MATCHES "public ${class}[^A-Za-z0-9_]"))
    set(${result} TRUE PARENT_SCOPE)
  endif()
endfunction()

# A folder of the library whose headers lie flat for hosts and whose private folders lie below it: its sources may use
# these, whose headers stand on the flat ones.
set(has_private_folders platform)

# `included` is a path below the library's root, or below the tree's for what programs include of their own.
macro(check_own_include)
  is_below("${included}" "${below_${layer}}" below)
  crosses_views("${file}" "${included}" crosses)
  if(NOT EXISTS ${ROOT}/${included_place} AND NOT EXISTS ${ROOT}/${included_place}.in)
    fault("${place}: includes \"${included}\", which is no file below the root")
  elseif(NOT below)
    fault("${place}: includes \"${included}\", but ${layer}/ stands on ${below_${layer}}")
  elseif(crosses)
    fault("${place}: includes \"${included}\" of another view folder without deriving from its class")
  elseif(layer IN_LIST sees_public_headers_only AND NOT included MATCHES "^${layer}/"
      AND NOT included IN_LIST PUBLIC_HEADERS)
    fault("${place}: includes \"${included}\", which is not a public header")
  elseif(file IN_LIST PUBLIC_HEADERS AND NOT included IN_LIST PUBLIC_HEADERS)
    fault("${place}: is public but includes \"${included}\", which is not installed")
  endif()
  cmake_path(GET file PARENT_PATH from_folder)
  cmake_path(GET included PARENT_PATH to_folder)
  if(from_folder IN_LIST has_private_folders AND file MATCHES "[.]cpp$" AND to_folder MATCHES "^${from_folder}/")
    # the door of a private folder
  elseif(NOT from_folder STREQUAL to_folder)
    list(APPEND arrows "${from_folder}>${to_folder}")
  endif()
endmacro()

set(arrows)
foreach(layer IN LISTS layers)
  set(root "")
  if(layer IN_LIST library)
    set(root ${library_root}/)
  endif()
  file(GLOB_RECURSE files RELATIVE ${ROOT}/${root} ${ROOT}/${root}${layer}/*.h ${ROOT}/${root}${layer}/*.cpp)
  foreach(file IN LISTS files)
    set(place ${root}${file})
    file(STRINGS ${ROOT}/${place} lines REGEX "^[ \t]*#[ \t]*include")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "<(XOV_Graphics/[^>]+)>" "\"\\1\"" line "${line}")
      if(line MATCHES "include[ \t]*\"XOV_Graphics/([^\"]+)\"")
        set(included ${CMAKE_MATCH_1})
        set(included_place ${library_root}/${included})
        check_own_include()
      elseif(line MATCHES "include[ \t]*\"([^\"]+)\"")
        set(included ${CMAKE_MATCH_1})
        set(included_place ${included})
        check_own_include()
      elseif(line MATCHES "include[ \t]*<([^>]+)>")
        set(included ${CMAKE_MATCH_1})
        if(included MATCHES "${desktop_headers}" AND NOT place MATCHES "${desktop_places}")
          fault("${place}: includes <${included}>, which only platform/ does")
        elseif(included MATCHES "${network_headers}" AND NOT place MATCHES "^${network_folders}")
          fault("${place}: includes <${included}>, which only ${network_folders} does")
        elseif(included MATCHES "${parser_header}" AND NOT place MATCHES "${parser_places}")
          fault("${place}: includes <${included}>, but options are declared through options/Options.h")
        elseif(layer STREQUAL "base" AND included MATCHES "${painting_headers}")
          fault("${place}: includes <${included}>, but base/ stands on QtCore")
        endif()
      endif()
    endforeach()
  endforeach()
endforeach()

# --- circles between folders: take away folders that point nowhere until none is left

list(REMOVE_DUPLICATES arrows)
set(shrinks TRUE)
while(arrows AND shrinks)
  set(shrinks FALSE)
  foreach(arrow IN LISTS arrows)
    string(REGEX REPLACE "^.*>" "" target "${arrow}")
    set(points ${arrows})
    list(FILTER points INCLUDE REGEX "^${target}>")
    if(NOT points)
      list(REMOVE_ITEM arrows ${arrow})
      set(shrinks TRUE)
    endif()
  endforeach()
endwhile()
if(arrows)
  list(SORT arrows)
  string(JOIN ", " circle ${arrows})
  fault("folders include each other in a circle: ${circle}")
endif()

if(faults GREATER 0)
  message(FATAL_ERROR "${faults} fault(s)")
endif()
