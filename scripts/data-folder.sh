# shellcheck shell=bash
# The user's folder: the one that the cook-book is started in, with its `Data` folder in it.

# Prints where it is.
user_folder() {
    local base=${XDG_DATA_HOME:-}
    [[ $base == /* ]] || base=${HOME:?is not set, so there is no place for the recipes}/.local/share
    printf '%s\n' "$base/tidewell-larder"
}

# has_data FOLDER: whether it has a `Data` folder, in whatever case, as the program looks for it.
has_data() {
    [[ -d $1 && -n $(find "$1" -mindepth 1 -maxdepth 1 -iname data -print -quit) ]]
}

# make_data FOLDER FILL...: gives the folder a `Data` folder when it has none. FILL is a command
# that is run with the name of an empty folder behind its arguments; it makes `Data` in that, and
# beside it what belongs there.
#
# A `Data` folder that exists is never touched. A new one is complete when it appears: it is made
# beside its place, brought to the disk and renamed; two starts at the same time make one.
make_data() {
    local folder=$1
    shift
    has_data "$folder" && return 0
    mkdir -p "$folder"
    # shellcheck disable=SC2094 # the folder is only opened to lock it
    (
        flock 9
        if ! has_data "$folder"; then
            rm -rf "$folder"/.making-data.* # left by a start that was cut off
            local new item
            new=$(mktemp -d "$folder/.making-data.XXXXXX")
            trap 'rm -rf "$new"' EXIT
            "$@" "$new"
            sync -f "$new"
            for item in "$new"/*; do
                [[ $item == "$new/Data" ]] || mv -nT "$item" "$folder/${item##*/}"
            done
            mv -T "$new/Data" "$folder/Data"
        fi
    ) 9<"$folder"
}
