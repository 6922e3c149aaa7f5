// SPDX-License-Identifier: GPL-3.0-or-later
// The "Music" menu and the background songs: one song over and over, all songs
// in turn, or silence. The check marks of the menu are the whole state, with
// canzone_corrente for the song reached in sequential mode.
#include "ui/frmTV.h"

#include "platform/mmc.h"
#include "ui/mdGraphics.h"

#include <QAction>

namespace {

// The song items the menu holds now.
long numero_voci_canzoni(FrmTV& f)
{
    long n = 0;
    for (long i = f.canzoni.basso; i <= f.canzoni.alto && f.canzoni(i); ++i) ++n;
    return n;
}

void togli_spunte_canzoni(FrmTV& f)
{
    for (long i = 1; i <= numero_voci_canzoni(f); ++i) f.canzoni(i)->setChecked(false);
}

QString file_canzone(FrmTV& f, long indice, const QString& estensione)
{
    return cartella_programma() + QStringLiteral("/music/") + f.canzoni(indice)->text() + estensione;
}

}  // namespace

void FrmTV::canzoni_Click(int index)
{
    togli_spunte_canzoni(*this);
    canzoni(index)->setChecked(true);
    nomusic->setChecked(false);
    all->setChecked(false);
    canzone_corrente = 0;

    MMC1->Command(QStringLiteral("close"));
    MMC1->FileName = file_canzone(*this, index, QStringLiteral(".MID"));
    MMC1->Command(QStringLiteral("open"));
    MMC1->Wait = false;
    MMC1->Command(QStringLiteral("play"));
}

void FrmTV::all_Click()
{
    togli_spunte_canzoni(*this);
    nomusic->setChecked(false);
    all->setChecked(true);
    // As if a song had just ended: the next one in the sequence starts.
    MMC1_Done(MMControl::mciSuccessful);
}

void FrmTV::nomusic_Click()
{
    togli_spunte_canzoni(*this);
    nomusic->setChecked(true);
    all->setChecked(false);
    canzone_corrente = 0;

    MMC1->Command(QStringLiteral("close"));
}

void FrmTV::MMC1_Done(int NotifyCode)
{
    if (NotifyCode != MMControl::mciSuccessful) return;

    if (all->isChecked()) {
        const long voci = numero_voci_canzoni(*this);
        if (canzone_corrente == voci) canzone_corrente = 0;
        canzone_corrente = canzone_corrente + 1;
        if (canzone_corrente != 1) {
            canzoni(canzone_corrente - 1)->setChecked(false);
        } else {
            canzoni(voci)->setChecked(false);
        }
        canzoni(canzone_corrente)->setChecked(true);

        // Waiting is left as it stands here, unlike the other two starts.
        MMC1->Command(QStringLiteral("close"));
        MMC1->FileName = file_canzone(*this, canzone_corrente, QStringLiteral(".mid"));
        MMC1->Command(QStringLiteral("Open"));
        MMC1->Command(QStringLiteral("play"));
    }
    if (!all->isChecked()) {
        MMC1->From = 0;
        MMC1->Command(QStringLiteral("Play"));
    }
}
