# bash completion for xov

_xov_options() {
  local output='-o --output --size --scale --title'
  local image='--palette --shades --inverted'
  case $1 in
    section) echo "-h --help --gain --zero-lines --sort --raw --channels $output" ;;
    panels) echo "-h --help --gain --channels $output" ;;
    stack) echo "-h --help --style --fill --fixed-x --fixed-y --raw --channels $output" ;;
    three) echo "-h --help --components --self-scaled --peaks --raw --channels $output" ;;
    drum) echo "-h --help --rows --row-duration --gain --events --mag --zero-lines --hours --channels $output" ;;
    monitor) echo "-h --help --replay --speed --span --origin --gain --at --events --zone-name --channels $output" ;;
    xy) echo "-h --help --columns --xlabel --ylabel $output" ;;
    scatter) echo "-h --help --columns --xlabel --ylabel --diameter $output" ;;
    hist) echo "-h --help --columns --xlabel --ylabel --bins --min --max --remove-mean --dump $output" ;;
    map) echo "-h --help --topo --topo-size --topo-extent --image --region --plates --polygons --events --colors" \
      "--stations --station-columns --vectors --vector-columns --vector-scale --align $output" ;;
    grid) echo "-h --help --rows --columns --type --byte-order --extent --min --max --topo --peak --xlabel --ylabel $image $output" ;;
    fk) echo "-h --help --stations --band --window --limit --steps --channels --xyz $image $output" ;;
    info) echo '-h --help --channels' ;;
    resources) echo '-h --help --pb2002' ;;
    *) echo '-h --help --version' ;;
  esac
}

_xov() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
  COMPREPLY=()
  if ((COMP_CWORD == 1)) && [[ $word != -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W 'section panels stack three drum monitor xy scatter hist map grid fk info resources' -- "$word")
    return
  fi
  ((COMP_CWORD == 1)) && command=
  case $previous in
    --sort) mapfile -t COMPREPLY < <(compgen -W 'distance azimuth name' -- "$word"); return ;;
    --style) mapfile -t COMPREPLY < <(compgen -W 'overlay bands' -- "$word"); return ;;
    --origin) mapfile -t COMPREPLY < <(compgen -W 'left right' -- "$word"); return ;;
    --channels | --fixed-x | --fixed-y | --components | --rows | --row-duration | --mag | --speed | --span | --at) return ;;
    --image) mapfile -t COMPREPLY < <(compgen -W '0 1 2 3 4 10' -- "$word"); return ;;
    --plates) mapfile -t COMPREPLY < <(compgen -W 'bird types' -- "$word"); return ;;
    --colors) mapfile -t COMPREPLY < <(compgen -W 'seis nogreen polar red' -- "$word"); return ;;
    --align) mapfile -t COMPREPLY < <(compgen -W 'centre top bottom' -- "$word"); return ;;
    --region | --topo-size | --topo-extent | --station-columns | --vector-columns | --vector-scale) return ;;
    --palette) mapfile -t COMPREPLY < <(compgen -W '0 1 2 3 4' -- "$word"); return ;;
    --type) mapfile -t COMPREPLY < <(compgen -W 'int16 float32' -- "$word"); return ;;
    --byte-order) mapfile -t COMPREPLY < <(compgen -W 'little big' -- "$word"); return ;;
    --extent | --shades | --band | --window | --limit | --steps) return ;;
    --gain | --size | --scale | --title | --columns | --xlabel | --ylabel | --diameter | --bins | --min | --max) return ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_xov_options "$command")" -- "$word")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}

complete -F _xov xov
