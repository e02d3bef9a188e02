# Renders the chapters in GUIDE, in the order of the list in its index.md, to RENDERED. A link to a chapter's
# Markdown becomes one to its page, and an image gets its @2x sister. Output depends on nothing but the input.
# GUIDE/LANGUAGE may have chapters in another language; they use the images and the theme of the others, and lead to
# chapters that are only there in English.
cmake_minimum_required(VERSION 3.25)

file(READ "${GUIDE}/theme/page.html" page)
file(REMOVE_RECURSE "${RENDERED}")

# SOURCE with its chapters to TARGET; the theme is in the folder that ROOT leads to from there.
function(render source target root language name heading list_name)
    file(READ "${source}/index.md" index)
    string(REGEX MATCHALL "\\([a-z-]+\\.md\\)" links "${index}")
    set(chapters index)
    foreach(link IN LISTS links)
        string(REGEX REPLACE "\\((.*)\\.md\\)" "\\1" chapter "${link}")
        list(APPEND chapters ${chapter})
    endforeach()

    foreach(chapter IN LISTS chapters)
        execute_process(
            COMMAND "${LOWDOWN}" -thtml --parse-no-metadata --out-no-smarty --html-no-skiphtml
                --html-no-escapehtml "${source}/${chapter}.md"
            OUTPUT_VARIABLE html COMMAND_ERROR_IS_FATAL ANY)
        string(REGEX REPLACE "href=\"([a-z./-]+)\\.md([\"#])" "href=\"\\1.html\\2" html "${html}")
        string(REGEX REPLACE "src=\"([./]*images/[a-z-]+)\\.png\"" "src=\"\\1.png\" srcset=\"\\1@2x.png 2x\"" html "${html}")
        if(NOT html MATCHES "<h1[^>]*>([^<]+)</h1>")
            message(FATAL_ERROR "${chapter}.md has no title")
        endif()
        set(title_${chapter} "${CMAKE_MATCH_1}")
        set(html_${chapter} "${html}")
    endforeach()

    foreach(chapter IN LISTS chapters)
        set(list "<ul>\n")
        set(before "")
        set(after "")
        set(passed FALSE)
        foreach(other IN LISTS chapters)
            set(here "")
            if(other STREQUAL chapter)
                set(here " aria-current=\"page\"")
                set(passed TRUE)
            elseif(NOT passed)
                set(before "<a href=\"${other}.html\" rel=\"prev\">← ${title_${other}}</a>")
            elseif(NOT after)
                set(after "<a href=\"${other}.html\" rel=\"next\">${title_${other}} →</a>")
            endif()
            string(APPEND list "<li><a href=\"${other}.html\"${here}>${title_${other}}</a></li>\n")
        endforeach()

        set(title "${title_${chapter}} – ${name}")
        if(chapter STREQUAL "index")
            set(title "${name}")
        endif()
        set(html "${page}")
        string(REPLACE "@title@" "${title}" html "${html}")
        string(REPLACE "@version@" "${VERSION}" html "${html}")
        string(REPLACE "@language@" "${language}" html "${html}")
        string(REPLACE "@root@" "${root}" html "${html}")
        string(REPLACE "@heading@" "${heading}" html "${html}")
        string(REPLACE "@list@" "${list_name}" html "${html}")
        string(REPLACE "@chapters@" "${list}</ul>" html "${html}")
        string(REPLACE "@neighbours@" "<span>${before}</span> <span>${after}</span>" html "${html}")
        string(REPLACE "@body@" "${html_${chapter}}" html "${html}")
        file(WRITE "${target}/${chapter}.html" "${html}")
    endforeach()
endfunction()

render("${GUIDE}" "${RENDERED}" "" en "Veltrix user guide" "User guide for version" "Chapters")
render("${GUIDE}/de" "${RENDERED}/de" "../" de "Veltrix-Handbuch" "Handbuch zur Version" "Kapitel")
file(COPY "${GUIDE}/images" DESTINATION "${RENDERED}" FILES_MATCHING PATTERN "*.png")
file(COPY "${GUIDE}/theme/guide.css" DESTINATION "${RENDERED}/theme")
