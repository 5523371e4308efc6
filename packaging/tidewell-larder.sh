#!/usr/bin/env bash
# The installed cook-book: makes the user's folder if there is none, and starts the program in it.
set -euo pipefail

prefix=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd -P)
# shellcheck source=scripts/data-folder.sh
source "$prefix/share/tidewell-larder/data-folder.sh"

folder=$(user_folder)
make_data "$folder" cp -r "$prefix/share/tidewell-larder/stock/."
cd "$folder"
exec "$prefix/libexec/tidewell-larder/tidewell-larder" "$@"
