# For scripts that put settings and templates beside a built plug-in and leave nothing behind.
examples=$(cd "$(dirname "${BASH_SOURCE[0]}")/../examples" && pwd)
network="Z:${examples%/examples}/simulator/networks/room.json"

# take_plugin_folder FOLDER: from now on the folder is $plugin_folder, and at the script's end its settings
# files and label templates are as they are now. $kept is a folder that goes with the script.
take_plugin_folder() {
    plugin_folder=$(realpath "$1") || exit 1
    kept=$(mktemp -d)
    shopt -s nullglob
    local file
    for file in "$plugin_folder"/*.{ini,zpl,epl}; do mv "$file" "$kept/"; done
    trap give_plugin_folder EXIT
}

give_plugin_folder() {
    rm -f "$plugin_folder"/*.{ini,zpl,epl}
    local file
    for file in "$kept"/*.{ini,zpl,epl}; do mv "$file" "$plugin_folder/"; done
    rm -rf "$kept"
}
