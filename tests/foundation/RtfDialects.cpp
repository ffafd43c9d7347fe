#include "RtfDialects.h"

namespace foundation {

QByteArray cocoaRtf() {
  return R"({\rtf1\ansi\ansicpg1252\cocoartf2639
\cocoatextscaling0\cocoaplatform0{\fonttbl\f0\fswiss\fcharset0 Helvetica-Bold;\f1\fswiss\fcharset0 Helvetica;\f2\fnil\fcharset0 Inter;
}
{\colortbl;\red255\green255\blue255;\red251\green2\blue7;\red0\green0\blue255;}
{\*\expandedcolortbl;;\cssrgb\c100000\c14913\c0;\cssrgb\c0\c0\c100000\c50000;}
\paperw11900\paperh16840\margl1440\margr1440\vieww11520\viewh8400\viewkind0
\pard\tx566\tx1133\pardirnatural\qc\partightenfactor0

\f0\b\fs48 \cf2 Stra\'dfe 
\f1\b0 live \uc0\u8364 5\
\cf3 half\
\pard\pardirnatural\partightenfactor0
\cf0 \
\pard\pardirnatural\qr\partightenfactor0

\f2\i\fs24 \cf0 \ul \ulc0 \strike \strikec0 end}
)";
}

QByteArray wordRtf() {
  return R"({\rtf1\adeflang1025\ansi\ansicpg1252\uc1\adeff31507\deff0\stshfdbch31505\stshfloch31506\deflang1031\deflangfe1031\themelang1031{\fonttbl{\f0\fbidi \froman\fcharset0\fprq2{\*\panose 02020603050405020304}Times New Roman;}{\f1\fbidi \fswiss\fcharset0\fprq2{\*\panose 020b0604020202020204}Arial{\*\falt Helvetica};}
{\f31506\fbidi \fswiss\fcharset0\fprq2{\*\panose 020f0502020204030204}Calibri;}{\f40\fbidi \fswiss\fcharset178\fprq2 Arial;}}{\colortbl;\red0\green0\blue0;\red0\green0\blue255;}
{\*\defchp \fs22\loch\af31506 }{\*\defpap \ql \li0\ri0\sa160 }\noqfpromote {\stylesheet{\ql \li0\ri0\sa160 \snext0 \sqformat Normal;}{\*\cs10 \additive Default Paragraph Font;}}
{\*\rsidtbl \rsid2097213}{\mmathPr\mmathFont34\mbrkBin0}{\info{\title Title}{\author Somebody}{\creatim\yr2024\mo3}{\nofpages1}}
{\*\xmlnstbl {\xmlns1 urn:x}}\paperw11906\paperh16838\margl1417\ltrsect
\widowctrl\ftnbj\viewkind1{\*\fchars ).,}\fet0{\*\wgrffmtfilter 2450}\ilfomacatclnup0
{\*\pnseclvl1\pnucrm\pnstart1{\pntxta .}}\sectd \ltrsect\linex0
\pard\plain \ltrpar\qj \li0\ri0\sa160\widctlpar\wrapdefault\aspalpha\faauto\adjustright\rin0\lin0\itap0 \rtlch\fcs1 \af1\afs22\alang1025 \ltrch\fcs0 \f31506\fs22\lang1031\cgrid {\rtlch\fcs1 \ab\af1 \ltrch\fcs0
\b\f1\fs32\ul\insrsid1 Head }{\rtlch\fcs1 \af1 \ltrch\fcs0 \f1\fs32\insrsid2 \ldblquote line\rdblquote
\par }\pard \ltrpar\qc \widctlpar {\rtlch\fcs1 \af1 \ltrch\fcs0 \insrsid3 x}{\super 2}{\field\fldedit{\*\fldinst {\insrsid4  HYPERLINK "http://example.org" }{{\*\datafield
00d0c9ea79f9bace}}}{\fldrslt {\insrsid5  site}}}\sectd {
\par }\pard\plain \rtlpar\qr {\f40\fs28 \'e3\'d1\'cd\'c8\'c7\par }
\pard\plain \intbl a\cell b\cell{\*\shppict{\pict{\*\picprop}\pngblip
89504e470d0a}}{\nonshppict{\pict\wmetafile8 0100}}{\row }{\*\themedata 504b0304}{\*\latentstyles\lsdstimax376{\lsdlockedexcept Normal;}}}
)";
}

QByteArray officeRtf() {
  return R"({\rtf1\ansi\deff3\adeflang1025
{\fonttbl{\f0\froman\fprq2\fcharset0 Times New Roman;}{\f3\froman\fprq0\fcharset0 Liberation Serif{\*\falt Times New Roman};}{\f5\fnil\fprq2\fcharset0 Noto Sans;}}
{\colortbl;\red0\green0\blue0;\red255\green255\blue0;\red255\green0\blue0;}
{\stylesheet{\s0\snext0\rtlch\af7\afs24\alang1081 \ltrch\lang1031\loch\f3\fs24\kerning1 Default Style;}}
{\*\generator AnOffice/7.4}{\info{\creatim\yr2024\mo1\dy2}{\printim\yr0\mo0}}{\*\userprops}\deftab709
\hyphauto1\viewscale100\formshade\paperh16838\paperw11906\margl1134\sectd\sbknone
{\*\ftnsep\chftnsep}\pgndec\pard\plain \s0\rtlch\af7\afs24 \ltrch\loch\f3\fs24\ql\ltrpar{\highlight2
marked}{\loch
 \u1103\'3f}
\par \pard\plain \s0\ql\ltrpar\li720\ri200\fi-360\loch\f3\fs24{\ulwave\ulc3\loch wave\line more}}
)";
}

}  // namespace foundation
