# Shows that the layer check finds each kind of fault: small trees with one fault each, and one without.
#   cmake -DCHECK=layers.cmake -DFOLDER=<scratch> -P LayersTest.cmake
cmake_minimum_required(VERSION 3.25)

function(tree)
  file(REMOVE_RECURSE ${FOLDER})
  set(rest "${ARGN}")
  while(rest)
    list(POP_FRONT rest path content)
    file(WRITE ${FOLDER}/${path} "${content}\n")
  endwhile()
endfunction()

function(expect name wanted)
  execute_process(COMMAND ${CMAKE_COMMAND} -DROOT=${FOLDER} "-DPUBLIC_HEADERS=platform/View.h;views/xy/Xy.h" -P ${CHECK}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(wanted STREQUAL "nothing")
    if(NOT status EQUAL 0)
      message(SEND_ERROR "${name}: expected no fault, found:\n${output}")
    endif()
  elseif(status EQUAL 0 OR NOT output MATCHES "${wanted}" OR NOT output MATCHES "1 fault\\(s\\)")
    message(SEND_ERROR "${name}: expected one fault '${wanted}', found (status ${status}):\n${output}")
  endif()
endfunction()

set(painter "#include <QPainter>")
set(view platform/View.h "${painter}")

tree(${view} views/base/Base.h "#include \"platform/View.h\"" views/xy/Xy.h "#include <QString>"
  views/time/Time.h "#include \"views/base/Base.h\"\n#include \"views/xy/Xy.h\"\nclass Time : public Xy {}"
  apps/xov/main.cpp "#include <XOV_Graphics/views/xy/Xy.h>")
expect("a tree in order" nothing)

tree(${view} graphics/Axis.cpp "${painter}")
expect("a painter above the platform" "graphics/Axis.cpp: includes <QPainter>")

tree(${view} graphics/Axis.cpp "#  include <QtGui/QPainter>")
expect("a painter by its long name" "graphics/Axis.cpp: includes <QtGui/QPainter>")

tree(${view} seismic/Io.h "#include <QtWidgets>")
expect("an umbrella header" "seismic/Io.h: includes <QtWidgets>")

tree(${view} views/xy/Xy.cpp "#include <QPainterPath>")
expect("a painter path is geometry" nothing)

tree(${view} seismic/Io.h "#include \"platform/View.h\"")
expect("a model that paints" "seismic/Io.h: includes \"platform/View.h\", but seismic/")

tree(platform/View.h "#include \"graphics/Axis.h\"" graphics/Axis.h "")
expect("an arrow upwards" "platform/View.h: includes \"graphics/Axis.h\", but platform/")

tree(graphics/Axis.cpp "#include \"Axis.h\"" graphics/Axis.h "")
expect("a path that does not start at the root" "includes \"Axis.h\", which is no file")

tree(views/xy/Xy.h "" views/time/Time.h "#include \"views/xy/Xy.h\"\nclass Time : public XyPlus {}")
expect("a view that borrows from another folder" "views/time/Time.h: includes \"views/xy/Xy.h\" of another")

tree(views/xy/Xy.h "" views/base/Base.h "#include \"views/xy/Xy.h\"\nclass Base : public Xy {}")
expect("the base on top of a view" "views/base/Base.h: includes \"views/xy/Xy.h\" of another")

tree(platform/Picture.h "" apps/xov/main.cpp "#include \"platform/Picture.h\"")
expect("a program with a private header" "main.cpp: includes \"platform/Picture.h\", which is not a public")

tree(platform/Picture.h "" platform/View.h "#include \"platform/Picture.h\"")
expect("a public header with a private one" "platform/View.h: is public but includes")

tree(seismic/A.h "#include \"seismic/io/B.h\"" seismic/io/B.h "#include \"seismic/A.h\"" ${view})
expect("a circle" "in a circle: seismic/io>seismic, seismic>seismic/io")

string(REPEAT "int x\n" 500 long)
tree(tests/Long.cpp "${long}")
expect("a long file" "tests/Long.cpp: 501 lines")
