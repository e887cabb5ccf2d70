# What Zentrel puts into the user's desktop, outside its own folder: menu entry, icon, metadata, the
# service by which other programs start it, completions, and commands. Sourced by install and by
# scripts/stage, after placing.sh.
#
# One copy of Zentrel has the desktop: the one that was installed last. A ledger of its own tells
# which, and what lies where.

# desktop_places: finds them for this user; false where there is no home to put anything into.
desktop_places() {
  [[ ${HOME:-} == /* ]] || return 1
  # The base directory rules ignore a path that isn't absolute.
  data_home=$HOME/.local/share
  [[ ${XDG_DATA_HOME:-} != /* ]] || data_home=${XDG_DATA_HOME%/}
  bin_home=$HOME/.local/bin
  desktop_ledger=$data_home/zentrel/desktop.sha256
  entry_file=$data_home/applications/org.zentrel.Zentrel.desktop
  service_file=$data_home/dbus-1/services/org.zentrel.Zentrel.service
}

# desktop_owner: the folder of the copy that has the desktop, or nothing.
desktop_owner() {
  local line
  [ -f "$desktop_ledger" ] || return 0
  line=$(grep -m1 '^#folder ' "$desktop_ledger") || return 0
  printf '%s' "${line#\#folder }"
}

# key_text TEXT: as the value of a key in a desktop entry or service file.
key_text() { printf '%s' "${1//\\/\\\\}"; }

# exec_text PROGRAM: as a desktop entry's Exec, where a percent sign is a field code. Desktops look
# for the program before they read the codes, so behind a sign of its own it needs another in front.
exec_text() {
  local word=$1 char
  for char in '\' '"' '`' '$'; do word=${word//"$char"/"\\$char"}; done
  [[ $word != *%* ]] || printf 'env '
  key_text "\"${word//%/%%}\""
}

entry_text() {
  cat <<ENTRY
[Desktop Entry]
Type=Application
Name=Zentrel
GenericName=Synthesiser Programmer
Comment=Program frequency synthesisers and clock conditioners on evaluation boards
Exec=$(exec_text "$1/zentrel")
TryExec=$(key_text "$1/zentrel")
Icon=org.zentrel.Zentrel
Terminal=false
StartupWMClass=Zentrel
Categories=Science;Electronics;Engineering;
Keywords=PLL;VCO;register;clock;frequency;
ENTRY
}

# The bus daemon splits Exec as a shell would.
service_text() {
  cat <<SERVICE
[D-BUS Service]
Name=org.zentrel.Zentrel
Exec=$(key_text "'${1//"'"/"'\\''"}/zentrel'") --automation
SERVICE
}

# put_on_desktop FOLDER: FOLDER has the desktop from here on.
put_on_desktop() (
  folder=$1 share=$1/share
  texts=$(mktemp -d)
  trap 'rm -rf "$texts"' EXIT
  entry_text "$folder" >"$texts/entry"
  service_text "$folder" >"$texts/service"
  sources=("$texts/entry" "$texts/service" "$share/org.zentrel.Zentrel.svg"
    "$share/org.zentrel.Zentrel.metainfo.xml")
  names=("$entry_file" "$service_file"
    "$data_home/icons/hicolor/scalable/apps/org.zentrel.Zentrel.svg"
    "$data_home/metainfo/org.zentrel.Zentrel.metainfo.xml")
  for completion in "$share"/completion/*; do
    [ -f "$completion" ] || continue
    sources+=("$completion")
    names+=("$data_home/bash-completion/completions/${completion##*/}")
  done
  before=$(desktop_owner)
  take_desktop "$folder"
  for name in zentrel zentrelctl; do link_command "$before" "$folder" "$name"; done
  close_ledger
  tell_bus
  say_kept "$data_home"
)

# take_desktop FOLDER: puts `sources` under `names`. The ledger is left open for the links.
take_desktop() {
  local i sum
  open_ledger "$desktop_ledger"
  notes=("folder $1")
  for i in "${!names[@]}"; do
    find_sum "${sources[i]}"
    expect "${names[i]}" "$sum"
  done
  announce
  for i in "${!names[@]}"; do place "${sources[i]}" "${names[i]}"; done
  retire
}

# link_command BEFORE FOLDER NAME: a command of that name, unless there is somebody else's.
link_command() {
  local link=$bin_home/$3 target=$2/$3
  if [ -L "$link" ] && [ "$(readlink "$link")" = "$1/$3" ]; then rm -f "$link"; fi
  [ -x "$target" ] || return 0
  if [ ! -e "$link" ] && [ ! -L "$link" ]; then
    make_folder "$bin_home"
    ln -s "$target" "$link"
  elif [ ! "$link" -ef "$target" ]; then
    echo "Left $link alone, which isn't Zentrel's. The command is $target"
  fi
}

# take_off_desktop FOLDER: if it is FOLDER that has the desktop.
take_off_desktop() (
  [ "$(desktop_owner)" = "$1" ] || exit 0
  for name in zentrel zentrelctl; do
    link=$bin_home/$name
    if [ -L "$link" ] && [ "$(readlink "$link")" = "$1/$name" ]; then rm -f "$link"; fi
  done
  open_ledger "$desktop_ledger"
  remove_all
  tell_bus
  say_left "${left[@]}"
)

# offer_service FOLDER: the service alone, for a copy that isn't installed, so that other programs
# can start it; but never in place of an installed copy's.
offer_service() (
  owner=$(desktop_owner)
  if [ "$owner" != "$1" ] && [ -n "$owner" ] && [ -x "$owner/zentrel" ]; then exit 0; fi
  if [ -z "$owner" ] && [ -e "$service_file" ]; then exit 0; fi
  text=$(service_text "$1")
  if [ -f "$service_file" ] && [ "$(cat "$service_file")" = "$text" ]; then exit 0; fi
  text_file=$(mktemp)
  trap 'rm -f "$text_file"' EXIT
  printf '%s\n' "$text" >"$text_file"
  sources=("$text_file") names=("$service_file")
  take_desktop "$1"
  close_ledger
  tell_bus
)

# A running bus hears of services at once.
tell_bus() {
  [ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ] && command -v dbus-send >/dev/null || return 0
  timeout 2 dbus-send --session --dest=org.freedesktop.DBus --type=method_call \
    /org/freedesktop/DBus org.freedesktop.DBus.ReloadConfig 2>/dev/null || true
}
