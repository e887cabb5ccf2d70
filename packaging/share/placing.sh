# Puts shipped files in place and takes them away again, and never loses a file that somebody
# changed. Sourced by install and by scripts/stage.
#
# A ledger holds the checksums of what was shipped, in sha256sum's own form, names relative to the
# ledger's folder or absolute: `sha256sum --quiet -c .shipped.sha256` tells what has changed since.
# While files are on their way LEDGER.coming lists what they will be, so that a run that was killed
# never makes a file of ours look like somebody's own, nor the other way round.

# open_ledger LEDGER: what the last run left, and what a killed one was about to leave. Nobody else
# opens it before this shell ends.
open_ledger() {
  ledger=$1
  base=${1%/*}
  declare -gA settled=() known=() coming=()
  made=() notes=() placed=() news=() left=()
  make_folder "$base"
  exec {lock}<"$base"
  flock -n "$lock" || { echo "another install is at work in $base" >&2; exit 1; }
  read_ledger "$ledger" settles
  read_ledger "$ledger.coming" comes
}

read_ledger() {
  local line name
  [ -f "$1" ] || return 0
  while IFS= read -r line; do
    case $line in
      '#made '*) made+=("${line#\#made }") ;;
      '#'*) ;;
      *)
        name=${line:66}
        known["${line:0:64} $name"]=$name
        if [ "$2" = settles ]; then settled["$name"]=${line:0:64}; fi
        ;;
    esac
  done <"$1"
}

# write_ledger FILE: the names in `coming`; whole or not at all.
write_ledger() {
  local name
  {
    echo "# What Zentrel put here, by checksum. A file that differs is yours, and no update touches it."
    [ ${#notes[@]} -eq 0 ] || printf '#%s\n' "${notes[@]}"
    [ ${#made[@]} -eq 0 ] || printf '#made %s\n' "${made[@]}"
    for name in "${!coming[@]}"; do
      printf '%s  %s\n' "${coming["$name"]}" "$name"
    done | LC_ALL=C sort -k 2
  } >"$1.writing"
  mv -f "$1.writing" "$1"
}

# expect NAME SUM: NAME will be shipped. To be called for all before announce, and that before place.
expect() {
  coming["$1"]=$2
  known["$2 $1"]=$1
}

announce() {
  local entry
  # What an earlier, killed run announced stays ours too.
  {
    for entry in "${!known[@]}"; do printf '%s  %s\n' "${entry:0:64}" "${known["$entry"]}"; done
    [ ${#made[@]} -eq 0 ] || printf '#made %s\n' "${made[@]}"
  } >"$ledger.coming.writing"
  mv -f "$ledger.coming.writing" "$ledger.coming"
}

close_ledger() {
  write_ledger "$ledger"
  rm -f "$ledger.coming"
}

# make_folder PATH: with the folders above it, remembering which weren't there before.
make_folder() {
  local above=$1 missing=()
  while [ ! -d "$above" ] && [ -n "$above" ]; do
    missing=("$above" "${missing[@]}")
    above=${above%/*}
  done
  mkdir -p "$1"
  made+=("${missing[@]}")
}

path_of() {
  case $1 in
    /*) printf '%s' "$1" ;;
    *) printf '%s' "$base/$1" ;;
  esac
}

sum_of() {
  local line
  line=$(sha256sum <"$1") || return
  printf '%s' "${line%% *}"
}

# state_of NAME: absent; ours, as Zentrel left it; or theirs, which nobody here may touch.
state_of() {
  local path
  path=$(path_of "$1")
  if [ -L "$path" ]; then
    echo theirs
  elif [ ! -e "$path" ]; then
    echo absent
  elif [ -f "$path" ] && [ -n "${known["$(sum_of "$path") $1"]:-}" ]; then
    echo ours
  else
    echo theirs
  fi
}

holds() { [ -f "$1" ] && [ "$(sum_of "$1")" = "$2" ]; }

# place SOURCE NAME: the expected NAME gets SOURCE's content, unless it is theirs: then it stays, and
# a shipped version that they haven't seen yet goes beside it as NAME.new.
place() {
  local source=$1 name=$2 sum=${coming["$2"]} beside=$2.new try=1
  if [ "$(state_of "$name")" != theirs ]; then
    put "$source" "$name" "$sum"
  elif [ "${settled["$name"]:-}" = "$sum" ]; then
    # Told before. What lies beside it since then stays ours.
    [ -z "${settled["$beside"]:-}" ] || coming["$beside"]=${settled["$beside"]}
  else
    while [ "$(state_of "$beside")" = theirs ] && ! holds "$(path_of "$beside")" "$sum"; do
      beside=$name.new$((++try))
    done
    put "$source" "$beside" "$sum"
    coming["$beside"]=$sum
    news+=("$beside")
  fi
}

put() {
  local path
  path=$(path_of "$2")
  holds "$path" "$3" && return
  make_folder "${path%/*}"
  cp "$1" "$path.installing"
  mv -f "$path.installing" "$path"
  placed+=("$2")
}

# retire: takes away what was shipped once and isn't any more. What they changed is left.
retire() {
  local name
  local -A once=()
  for name in "${known[@]}"; do
    [ -n "${coming["$name"]:-}${once["$name"]:-}" ] || take_away "$name"
    once["$name"]=yes
  done
}

take_away() {
  local path
  path=$(path_of "$1")
  rm -f "$path.installing"
  case $(state_of "$1") in
    ours)
      rm -f "$path"
      drop_empty "${path%/*}"
      ;;
    theirs) left+=("$1") ;;
  esac
}

# Empty folders inside the ledger's own go with their last file.
drop_empty() {
  local folder=$1
  while [[ $folder == "$base"/* ]] && rmdir "$folder" 2>/dev/null; do folder=${folder%/*}; done
}

# remove_all: everything that is ours, the ledger last. If something stays in the ledger's folder,
# so does a ledger that knows the changed files, for the day when Zentrel comes back.
remove_all() {
  local i name own=()
  retire
  mapfile -t own < <(find "$base" -mindepth 1 ! -type d ! -name "${ledger##*/}*")
  if [ ${#own[@]} -eq 0 ]; then
    rm -f "$ledger" "$ledger.coming"
    rmdir "$base" 2>/dev/null || true
  else
    for name in "${left[@]}"; do
      if [ -n "${settled["$name"]:-}" ]; then coming["$name"]=${settled["$name"]}; fi
    done
    close_ledger
  fi
  for ((i = ${#made[@]} - 1; i >= 0; i--)); do rmdir "${made[i]}" 2>/dev/null || true; done
}

# place_folder FROM FOLDER: what FROM's ledger lists goes into FOLDER. Something in FROM may have been
# changed since it was unpacked: that goes along as somebody's own, but replaces nothing.
place_folder() {
  local from=$1 folder=$2 line name
  local -A listed=() changed=()
  while IFS= read -r line; do
    [ "${line:0:1}" = "#" ] || listed["${line:66}"]=${line:0:64}
  done <"$from/.shipped.sha256"
  for name in "${!listed[@]}"; do
    [ -f "$from/$name" ] || { echo "$from lacks $name: unpack it again" >&2; exit 1; }
    holds "$from/$name" "${listed["$name"]}" || changed["$name"]=yes
  done
  open_ledger "$folder/.shipped.sha256"
  for name in "${!listed[@]}"; do expect "$name" "${listed["$name"]}"; done
  announce
  for name in "${!listed[@]}"; do
    if [ -z "${changed["$name"]:-}" ] || [ ! -e "$folder/$name" ]; then
      place "$from/$name" "$name"
    else
      [ -z "${settled["$name"]:-}" ] || coming["$name"]=${settled["$name"]}
      echo "Left $name in $folder as it is: the one in $from has been changed"
    fi
  done
  retire
  close_ledger
}

# say_kept WHERE: what place found changed, and where the news are.
say_kept() {
  if [ ${#news[@]} -gt 0 ]; then
    echo "Yours stay as they are. What Zentrel ships has news, put beside them in $1:"
    printf '  %s\n' "${news[@]}"
    echo "  To compare: diff -u NAME NAME.new    To take the news: mv NAME.new NAME"
  fi
  if [ ${#left[@]} -gt 0 ]; then
    echo "No longer shipped, but changed by you, so they stay in $1:"
    printf '  %s\n' "${left[@]}"
  fi
}

# say_left NAME...: what a removal leaves.
say_left() {
  [ $# -gt 0 ] || return 0
  echo "These stay, for you or the program made or changed them:"
  printf '  %s\n' "$@"
}
