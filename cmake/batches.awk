# Shares sources out to batches that can be compiled as one: reads a path a line and prints a batch a line, its paths
# separated by spaces, at most `most` of them. Sources that give the same name to a constant, a type, a macro or a function
# of their own go to different batches; where they lie nested in no namespace's braces is told by the first column.
#   awk -v most=10 -f batches.awk

function keep(name) {
  sub(/^.* /, "", name)
  sub(/[^A-Za-z0-9_].*$/, "", name)
  if (name != "") names[name] = 1
}

function own_names(source,   line, words, i) {
  split("", names)
  while ((getline line < source) > 0) {
    if (match(line, /^using [A-Za-z0-9_]+ =/)) {
      split(line, words, " ")
      keep(words[2])
    } else if (match(line, /^#define [A-Za-z0-9_]+/)) {
      keep(substr(line, RSTART, RLENGTH))
    } else if (match(line, /^MATCHER[A-Z0-9_]*\([A-Za-z0-9_]+/)) {
      sub(/^.*\(/, "", line)
      keep(line)
    } else if (line !~ /^[A-Za-z]/ || line ~ /^(namespace|using|return|TEST|TYPED_TEST|INSTANTIATE|DEFINE)/) {
      continue
    } else if (line ~ /^enum [A-Za-z0-9_]+ {/) {
      sub(/^[^{]*{/, "", line)
      split(line, words, /[^A-Za-z0-9_]+/)
      for (i in words) if (words[i] ~ /^[A-Z]/) keep(words[i])
    } else if (match(line, /k[A-Z][A-Za-z0-9_]*/) || match(line, /^(struct|class|enum class|union) [A-Za-z0-9_]+/) ||
        match(line, /[A-Za-z0-9_]+\(/) || match(line, /[A-Za-z0-9_]+ *(=|{|\[|;)/)) {
      if (substr(line, 1, RSTART - 1) !~ /::$/) keep(substr(line, RSTART, RLENGTH))
    }
  }
  close(source)
}

function takes(batch,   name) {
  if (size[batch] == most) return 0
  for (name in names) if ((batch, name) in used) return 0
  return 1
}

{
  own_names($0)
  for (batch = 1; batch <= count && !takes(batch); batch++) {}
  if (batch > count) count = batch
  size[batch]++
  files[batch] = files[batch] " " $0
  for (name in names) used[batch, name] = 1
}

END { for (batch = 1; batch <= count; batch++) print substr(files[batch], 2) }
