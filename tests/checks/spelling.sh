#!/bin/bash
# Holds comments and documents to British spelling: spelling.sh TREE
# Names in code are American, as Qt's are, and may stand in comments in `backticks` or with a sign that prose has not:
# setColor(), Qt::gray. What is quoted, "as a title", keeps its own spelling.
set -u
cd "$1" || exit 1

words='colors?|colored|coloring|gray|grays|grayish|centers?|centered|behaviors?|neighbors?|neighboring|favorites?|catalogs?'
words+='|(analy|normali|optimi|initiali|organi|recogni|minimi|maximi|summari|synchroni|rasteri|generali|quanti|vectori'
words+='|seriali|visuali|locali|reali|utili|discreti)z(e|es|ed|er|ers|ing|ation|ations)|labeled|labeling|modeled|modeling'
words+='|canceled|canceling|traveled|traveling|meters?|kilometers?|millimeters?|honor|honored|fulfill|judgment|miters?'
word="(?<![\\w.:>/-])($words)(?![\\w(.:/-]\\w|[(_])"

# comments FILE...: their comments with what is quoted left out, "FILE:LINE: text".
comments() {
  perl -ne 'if (m{(?:^|[^:"/])(//.*)}) { my $c = $1; $c =~ s/`[^`]*`|"[^"]*"//g; print "$ARGV:$.: $c\n" }
            close ARGV if eof' "$@"
}
documents() {
  perl -ne 's/`[^`]*`|"[^"]*"|\([^ )]*\)//g; print "$ARGV:$.: $_" unless $code || /^    /;
            $code = !$code if /^```/; close ARGV if eof' "$@"
}

found=$({
  mapfile -t sources < <(find src apps examples bench tests -name '*.h' -o -name '*.cpp' -o -name '*.h.in' | sort)
  comments "${sources[@]}"
  documents ./*.md docs/*.md docs/guide/*.md
} | grep -P ": .*$word")
[ -z "$found" ] && exit 0
echo "$found"
echo "American spelling in prose: write colour, grey, centre, behaviour, neighbour, optimise, metre; names of code go in \`backticks\`"
exit 1
