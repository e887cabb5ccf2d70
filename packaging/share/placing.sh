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
  flock -w 10 "$lock" || { echo "another install is at work in $base" >&2; exit 1; }
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
  } >"$1.writing" && mv -f "$1.writing" "$1"
}

# expect NAME SUM: NAME will be shipped. announce says so on disk, before anything is placed.
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
  } >"$ledger.coming.writing" && mv -f "$ledger.coming.writing" "$ledger.coming"
}

close_ledger() {
  write_ledger "$ledger" && rm -f "$ledger.coming"
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

# These answer in a variable: without a process each.

# find_path NAME -> path
find_path() { case $1 in /*) path=$1 ;; *) path=$base/$1 ;; esac }

# find_sum PATH -> sum; empty if it can't be read
find_sum() {
  sum=$(sha256sum <"$1") || sum=
  sum=${sum%% *}
}

# find_state NAME -> path, its sum, and state: absent; ours, as Zentrel left it; or theirs, which
# nobody here may touch.
find_state() {
  find_path "$1"
  state=theirs sum=
  if [ -L "$path" ]; then return; fi
  if [ ! -e "$path" ]; then state=absent; fi
  if [ -f "$path" ]; then
    find_sum "$path"
    if [ -n "${known["$sum $1"]:-}" ]; then state=ours; fi
  fi
}

# place SOURCE NAME: the expected NAME gets SOURCE's content, unless it is theirs: then it stays, and
# a shipped version that they haven't seen yet goes beside it as NAME.new.
place() {
  local source=$1 name=$2 expected=${coming["$2"]} beside=$2.new try=1 path state sum
  find_state "$name"
  if [ "$state" != theirs ]; then
    [ "$sum" = "$expected" ] || put "$source" "$path"
  elif [ "${settled["$name"]:-}" = "$expected" ]; then
    # Told before. What lies beside it since then stays ours.
    [ -z "${settled["$beside"]:-}" ] || coming["$beside"]=${settled["$beside"]}
  else
    find_state "$beside"
    while [ "$state" = theirs ] && [ "$sum" != "$expected" ]; do
      beside=$name.new$((++try))
      find_state "$beside"
    done
    expect "$beside" "$expected"
    announce
    [ "$sum" = "$expected" ] || put "$source" "$path"
    news+=("$beside")
  fi
}

# put SOURCE PATH
put() {
  make_folder "${2%/*}"
  cp "$1" "$2.installing" && mv -f "$2.installing" "$2" || return
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
  local path state sum
  find_state "$1"
  rm -f "$path.installing"
  if [ "$state" = theirs ]; then
    left+=("$1")
  else
    rm -f "$path"
    drop_empty "${path%/*}"
  fi
}

# Empty folders inside the ledger's own go with their last file.
drop_empty() {
  local folder=$1
  while [[ $folder == "$base"/* ]] && rmdir "$folder" 2>/dev/null; do folder=${folder%/*}; done
}

# remove_all: everything that is ours, the ledger last. If something stays in the ledger's folder,
# so does a ledger that knows the changed files, for the day when Zentrel comes back. The folders
# that were made for Zentrel are left to drop_folders.
remove_all() {
  local name own=()
  retire
  mapfile -t own < <(find "$base" -mindepth 1 ! -type d ! -name "${ledger##*/}*")
  if [ ${#own[@]} -eq 0 ]; then
    rm -f "$ledger".*
    rm -f "$ledger"
    rmdir "$base" 2>/dev/null || true
  else
    for name in "${left[@]}"; do
      if [ -n "${settled["$name"]:-}" ]; then coming["$name"]=${settled["$name"]}; fi
    done
    close_ledger
  fi
}

# made_folders LEDGER...: those that weren't there before, the inmost first.
made_folders() { cat -- "$@" 2>/dev/null | sed -n 's/^#made //p' | LC_ALL=C sort -ru; }

# drop_folders FOLDER...: the empty ones.
drop_folders() {
  local folder
  for folder in "$@"; do rmdir "$folder" 2>/dev/null || true; done
}

# place_folder FROM FOLDER: what FROM's ledger lists goes into FOLDER. Something in FROM may have been
# changed since it was unpacked: that goes along as somebody's own, but replaces nothing.
place_folder() {
  local from=$1 folder=$2 line name
  local -A listed=() changed=()
  while IFS= read -r line; do
    [ "${line:0:1}" = "#" ] || listed["${line:66}"]=${line:0:64}
  done <"$from/.shipped.sha256"
  open_ledger "$folder/.shipped.sha256"
  if up_to_date; then return; fi
  while IFS= read -r line; do
    name=${line%: FAILED*}
    [ -f "$from/$name" ] || { echo "$from lacks $name: unpack it again" >&2; exit 1; }
    changed["$name"]=yes
  done < <(cd "$from" && LC_ALL=C sha256sum --quiet -c .shipped.sha256 2>/dev/null)
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

# up_to_date: what is `listed` was shipped to the open ledger's folder before, and is all there.
up_to_date() {
  local name
  [ ! -f "$ledger.coming" ] || return 1
  for name in "${!listed[@]}"; do
    [ -e "$base/$name" ] && [ "${settled["$name"]:-}" = "${listed["$name"]}" ] || return 1
  done
  for name in "${!settled[@]}"; do
    [ -n "${listed["$name"]:-}" ] || [[ $name == *.new* ]] || return 1
  done
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
