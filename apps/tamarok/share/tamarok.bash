# Completion of tamarok for bash: commands, options, and the values of those options that have a list of values.

_tamarok_options() {
    case $1 in
    init) echo "--help --odbc --logs --records --seed --empty --force" ;;
    copy) echo "--help --db --odbc --from-odbc --format" ;;
    check) echo "--help --db --odbc --date-format --format" ;;
    day) echo "--help --db --odbc --locale" ;;
    list) echo "--help --db --odbc --ver --group --where --order --desc --lang --limit --oracle --locale --format" ;;
    sql) echo "--help --db --odbc --ver --group --where --order --desc --lang --limit --oracle --locale" ;;
    select) echo "--help --db --odbc --oracle --run --format --locale" ;;
    types) echo "--help --db --odbc --lang" ;;
    columns) echo "--help --db --odbc --ver --lang" ;;
    call) echo "--help --db --odbc --locale" ;;
    volume) echo "--help --csv --d --l --pieces --bark --mode --places --format --locale" ;;
    *) echo "--help --version" ;;
    esac
}

_tamarok() {
    local word=${COMP_WORDS[COMP_CWORD]} previous= command= values=
    ((COMP_CWORD == 0)) || previous=${COMP_WORDS[COMP_CWORD - 1]}
    ((COMP_CWORD < 2)) || command=${COMP_WORDS[1]}
    COMPREPLY=()
    case $command:$previous in
    *:--db | *:--csv) compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -f -- "$word")); return ;;
    volume:--format) return ;;
    *:--format) values="table csv json" ;;
    *:--lang) values="GERMAN ENGLISH FRENCH" ;;
    *:--ver) values="R A1 A2 A3 A4 A5 A6 A7 A8" ;;
    *:--mode) values="% cm" ;;
    *:--locale) values="de-AT de-DE de-CH en-GB en-US fr-FR cs-CZ" ;;
    *:--odbc | *:--logs | *:--records | *:--seed | *:--date-format | *:--where | *:--order | *:--limit | *:--d | *:--l | \
        *:--pieces | *:--bark | *:--places) return ;;
    :*) values="init copy check day list sql select types columns call volume $(_tamarok_options)" ;;
    *)
        values=$(_tamarok_options "$command")
        if [[ $command == init && $word != -* ]]; then
            compopt -o filenames 2>/dev/null
            COMPREPLY=($(compgen -f -- "$word"))
            return
        fi
        ;;
    esac
    COMPREPLY=($(compgen -W "$values" -- "$word"))
}

complete -F _tamarok tamarok
