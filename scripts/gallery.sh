# shellcheck shell=bash
# Reads samples/gallery.txt and writes the page of the gallery. Sourced by scripts/demo.

GALLERY_COLUMNS=(name languages kind section data size options caption)

# Codes of the languages that the samples speak, English first.
sample_languages() {
    echo en
    basename -s .txt "$ROOT"/samples/words/*.txt | grep -vx en
}

# The rows of gallery.txt, once for each of their languages, which takes the place of the column.
gallery_rows() {
    local line languages language
    while IFS= read -r line; do
        IFS='|' read -r _ languages _ <<<"$line"
        [[ ${languages// /} != all ]] || languages=$(sample_languages)
        for language in $languages; do
            echo "${line%%|*}|$language|${line#*|*|}"
        done
    done < <(grep -v -e '^[[:space:]]*#' -e '^[[:space:]]*$' "$ROOT/samples/gallery.txt")
}

# Takes the next row from the standard input into the associative array `row`.
read_row() {
    local line fields i value
    IFS= read -r line || return 1
    IFS='|' read -ra fields <<<"$line"
    [[ ${#fields[@]} -eq ${#GALLERY_COLUMNS[@]} ]] || die "gallery.txt: a row needs ${#GALLERY_COLUMNS[@]} columns: $line"
    for i in "${!GALLERY_COLUMNS[@]}"; do
        value=${fields[i]#"${fields[i]%%[![:space:]]*}"}
        row[${GALLERY_COLUMNS[i]}]=${value%"${value##*[![:space:]]}"}
    done
    speak "${row[languages]}"
}

# speak LANGUAGE: what the row is called in that language, and its directories.
speak() {
    local language
    row[app]=app
    if [[ $1 == en ]]; then
        row[caption]=${row[caption]% / *}
        return
    fi
    row[name]+=-$1
    row[app]+=-$1
    [[ ! -e $ROOT/samples/data/$1/${row[data]} ]] || row[data]=$1/${row[data]}
    language=$(sed -n 's/^language=//p' "$ROOT/samples/words/$1.txt")
    row[caption]=${row[caption]#* / }
    [[ ${row[caption]} == *"$language"* ]] || row[caption]+=" in $language"
}

page_head() {
    cat <<'HTML'
<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>MelkarCommon: gallery</title>
<style>
body { margin: 0 auto; max-width: 1480px; padding: 32px 24px 64px; background: #f3f5f8; color: #26323f;
       font: 15px/1.5 system-ui, "DejaVu Sans", sans-serif; }
h1 { font-size: 26px; margin: 0; }
h2 { font-size: 19px; margin: 40px 0 12px; }
p { margin: 4px 0 0; color: #5b6875; }
.pictures { display: grid; gap: 20px; grid-template-columns: repeat(auto-fill, minmax(min(460px, 100%), 1fr)); }
figure { margin: 0; background: #fff; border: 1px solid #dde3ea; border-radius: 8px; overflow: hidden; }
img { display: block; width: 100%; height: auto; }
figcaption { padding: 10px 14px; border-top: 1px solid #e8ecf1; font-size: 13px; color: #5b6875; }
a { color: #2f6ea5; text-decoration: none; }
a:hover { text-decoration: underline; }
</style>
</head>
<body>
<h1>MelkarCommon: gallery</h1>
<p>Drawn by <code>scripts/demo</code> from the profiles and data files in <code>samples/</code>.</p>
HTML
}

# figure PICTURE LINKS: the picture of the row, or of one of its pages.
figure() {
    printf '<figure><a href="%s"><img src="%s" width="%s" height="%s" alt="%s" loading="lazy"></a>' \
        "$1" "$1" "${row[size]%x*}" "${row[size]#*x}" "${row[caption]}"
    printf '<figcaption>%s<br><code>%s</code> · %s</figcaption></figure>\n' "${row[caption]}" "${1%.png}" "$2"
}

# write_page DIRECTORY: the page of the pictures there, grouped by kind in the order of the rows.
write_page() {
    local kind='' links page
    declare -A row
    page_head
    while read_row; do
        if [[ ${row[kind]} != "$kind" ]]; then
            [[ -z $kind ]] || echo '</div>'
            kind=${row[kind]}
            printf '<h2>%s</h2>\n<div class="pictures">\n' "$kind"
        fi
        if [[ ${row[kind]} == report ]]; then
            for page in "$1/${row[name]}"-[0-9]*.png; do
                figure "$(basename "$page")" "<a href=\"${row[name]}.pdf\">PDF</a>"
            done
            continue
        fi
        links="<a href=\"${row[name]}.png\">PNG</a>"
        [[ ! -e $1/${row[name]}.svg ]] || links+=" · <a href=\"${row[name]}.svg\">SVG</a>"
        [[ ! -e $1/${row[name]}.pdf ]] || links+=" · <a href=\"${row[name]}.pdf\">PDF</a>"
        figure "${row[name]}.png" "$links"
    done < <(gallery_rows)
    printf '</div>\n</body>\n</html>\n'
}
