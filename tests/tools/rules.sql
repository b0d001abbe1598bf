-- The rules of the screens that hold for every history, as statements that find what breaks them.
-- Totals of orders are those of their lines.
SELECT n_commande FROM commande WHERE etat_commande = 'Terminer' AND abs(HT - (SELECT sum(total) FROM
  relation_commande l WHERE l.n_commande = commande.n_commande)) > 0.005;
SELECT n_commande FROM relation_commande GROUP BY n_commande, code_article HAVING count(*) > 1;
SELECT n_commande FROM relation_commande l JOIN article ON code_barre = code_article WHERE prix <> prix_vente
  OR total <> qte * prix OR article <> designation_article;
SELECT n_commande FROM commande WHERE etat_commande = 'Terminer' AND (abs(remi - HT * remise / 100) > 0.005 OR
  abs(TVA - HT * 19 / 100) > 0.005);
-- Day, month and year are those of the date, and a closing covers the past only.
SELECT n_commande FROM commande WHERE date(date_commande) <> printf('%04d-%02d-%02d', A, M, J);
SELECT n_commande FROM commande c WHERE en_caisser = 'yes' AND NOT EXISTS (SELECT 1 FROM caise k WHERE
  k.id_caisse = c.id_caisse AND c.date_commande BETWEEN k.date_debut AND k.date_fin);
SELECT n_commande FROM commande c WHERE en_caisser = 'no' AND EXISTS (SELECT 1 FROM caise k WHERE
  c.date_commande BETWEEN k.date_debut AND k.date_fin);
-- A closing holds the receipts of its desk, the expenses of ordinary desks, and leaves what it says.
SELECT n_caise FROM caise k WHERE abs(total_recettes - (SELECT sum(tcc) FROM commande c WHERE c.id_caisse =
  k.id_caisse AND c.date_commande BETWEEN k.date_debut AND k.date_fin)) > 0.01;
SELECT n_caise FROM caise k WHERE abs(total_depense - ifnull((SELECT sum(montant_dep) FROM depence d JOIN
  caisse ON ID_caise = d.id_caisse WHERE general = 'NON' AND d.date_depense BETWEEN k.date_debut AND
  k.date_fin), 0)) > 0.01;
SELECT n_caise FROM caise WHERE abs(ecat_caise - (total_caise - solde_caisse)) > 0.01 OR abs(fond_caisse -
  (total_caise - prelevement_caise)) > 0.01;
SELECT n_caise FROM caise WHERE ecat_caise < 0 AND NOT EXISTS (SELECT 1 FROM depence WHERE type_depnce =
  'Perte' AND montant_dep = -ecat_caise AND date(date_depense) = date(date_fin));
-- The house desk holds what closings gave it, less its own expenses.
SELECT ID_caise FROM caisse WHERE general = 'OUI' AND abs(solde - (SELECT sum(prelevement_caise) FROM caise) +
  ifnull((SELECT sum(montant_dep) FROM depence d WHERE d.id_caisse = ID_caise), 0)) > 0.01;
-- Invoices are the sum of their lines, and what is paid and owed makes the total.
SELECT N_facture FROM facture_achat f WHERE abs(HT - (SELECT sum(TOTAL) FROM Achat a WHERE a.n_facture =
  f.N_facture)) > 0.005 OR abs(TCC - HT - TVA) > 0.005 OR abs(TCC - MONTANT_VERSE - MONTANT_RESTE) > 0.005;
SELECT ID_caise FROM caisse WHERE solde < 0;
