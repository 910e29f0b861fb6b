# Makes a source of tests out of the C++ blocks of Markdown pages: awk -f blocks.awk PAGE...
# Statements become the body of a test; a block with a main() becomes a program that is started by itself, and one
# with a TEST() stays as it is. A block that says "..." is a fragment that is not compiled.
function flush_block(   name) {
  name = substr(page, 1, 2)
  gsub(/[^0-9a-zA-Z]/, "", name)
  name = "page" name "line" start
  if (block ~ /\n *\.\.\./) return
  if (block ~ /(^|\n)int main\(/)
    body = body sprintf("namespace %s {\n#line %d \"%s\"\n%s}\nGUIDE_PROGRAM(%s)\n", name, start + 1, page, block, name)
  else if (block ~ /(^|\n)TEST\(/)
    body = body sprintf("namespace %s {\n#line %d \"%s\"\n%s}\n", name, start + 1, page, block)
  else
    body = body sprintf("TEST_F(Guide, %s) {\n#line %d \"%s\"\n%s}\n", name, start + 1, page, block)
}
FNR == 1 { page = FILENAME; sub(/.*\//, "", page) }
/^```cpp$/ { inside = 1; block = ""; start = FNR; next }
/^```/ && inside { inside = 0; flush_block(); next }
inside && /^#include/ { includes[$0] = 1; block = block "\n"; next }
inside { block = block $0 "\n" }
END {
  print "#include \"tests/guide/Guide.h\""
  for (i in includes) print i
  printf "%s", body
}
